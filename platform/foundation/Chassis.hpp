#pragma once

#include <optional>
#include <string_view>

/// What a machine's case tells about its screen.
enum class ChassisKind { Handset, PortablePlayer, LargerScreen };

/// From the names that the host-name service and device trees use ("handset", "convertible");
/// nullopt for any other.
std::optional<ChassisKind> chassisOfName(std::string_view name);

/// From the number that the firmware's DMI table holds, as decimal text; nullopt for one that says
/// "other" or "unknown", or that no table defines.
std::optional<ChassisKind> chassisOfDmiType(std::string_view number);

/// From the lines of /etc/machine-info, NAME=VALUE with or without quotes. The last line of a name
/// counts.
std::optional<ChassisKind> chassisOfMachineInfo(std::string_view contents);
