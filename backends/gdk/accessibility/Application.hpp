#pragma once

#include <atk/atk.h>
#include <gdk/gdk.h>

namespace windowing {

/// The root of everything that this program presents to assistive technology. The first call
/// creates it and registers it for the whole program; it lives as long as the process. If another
/// toolkit in the process has a root, that one is returned.
AtkObject* accessibleApplication();

/// Adds a window to the root or removes it. The root holds a reference. Has no effect with another
/// toolkit's root.
void addToApplication(AtkObject* frame);
void removeFromApplication(AtkObject* frame);

/// Reports a key press or release to assistive technology; returns whether it took the key, as one
/// of its commands.
bool tellKeyListeners(const GdkEventKey& event);

}  // namespace windowing
