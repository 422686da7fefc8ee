#include "shells/common/Backends.hpp"

#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"

namespace shell {

void installBackends() {
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<CairoImageDecoder>());
}

}  // namespace shell
