#pragma once

namespace shell {

/// Installs the property-list codec and the image decoder that all shells use. Once, before the
/// widget's bundle is loaded.
void installBackends();

}  // namespace shell
