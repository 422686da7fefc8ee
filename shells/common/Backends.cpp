#include "shells/common/Backends.hpp"
#include "backends/cairo/CairoImageDecoder.hpp"
namespace shell {
void installBackends() {
    UIImageDecoder::setDecoder(std::make_shared<CairoImageDecoder>());
}
}  // namespace shell
