#pragma once

#include <string>

/// The machine's model identifier ("hw.machine"): "iPhone…" for a handset, "iPod…" for a portable
/// player, "iPad…" for everything with a larger screen (tablet, convertible, laptop, desktop),
/// with the machine's own model behind a comma: "iPad,ThinkPad X13". Without a model of its own
/// the word stands alone. A machine that has a model but tells nothing usable of its chassis, a
/// virtual one for instance, counts as having a larger screen; empty when nothing can be told at
/// all. Read once; a shell's choice goes before.
std::string machineModel();

/// Overrides machineModel(); an empty text restores the machine's own answer.
void setMachineModel(const std::string& model);

/// The answer for a machine whose /etc, /sys and /proc lie below `root`: the chassis kind from
/// etc/machine-info (where the host-name service keeps it), else from the DMI table, else from the
/// device tree. A portable player is a handset whose ICON_NAME in etc/machine-info begins with
/// "multimedia-player"; a watch, too small for anything else, counts as one.
std::string machineModelBelow(const std::string& root);
