#pragma once

#include <string>

namespace test {

/// What the controllers make happen, as tests/support/HeadlessFixture.hpp writes it, for the
/// initial list in 320 points.
inline const std::string shown = "post org.tarnwick.mixer.isvisible";
inline const std::string gone = "post org.tarnwick.mixer.ishidden";
inline const std::string sizeTold = "host widget:didUpdatePreferredSize: 320 x 270";
inline const std::string sizeLogged = "log TW: self.preferredViewSize: {320, 270}";
inline const std::string sizeInvalid = "host invalidatePreferredViewSize";

}  // namespace test
