#pragma once

#include <string_view>

/// How much a turn of the wheel over the tray's icon changes a volume (0 to 1): five percent a
/// notch, up when it turns away from the user. `delta` is as the tray's host sends it,
/// `orientation` "vertical" or "horizontal" in any case; a horizontal turn changes nothing.
float volumeChangeByScroll(int delta, std::string_view orientation);
