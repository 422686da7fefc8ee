#include "backends/plist/PlistCodec.hpp"

#include <cstdlib>

/// Whatever reads as a property list and can be written at all must read again, as the same: what
/// is written the second time is what was written the first time.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const PlistCodec codec;
    const auto value = codec.decode({reinterpret_cast<const char*>(data), size}).value;
    const auto written = value ? codec.encode(*value) : std::nullopt;
    if (!written || written->size() > NSPropertyList::maximumFileBytes) return 0;
    const auto again = codec.decode(*written).value;
    if (!again || codec.encode(*again) != written) std::abort();
    return 0;
}
