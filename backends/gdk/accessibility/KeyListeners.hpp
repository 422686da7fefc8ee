#pragma once

#include <atk/atk.h>
#include <gdk/gdk.h>

/// Lets assistive technology hear the program's keys, and take those that are commands of its own.
void serveKeyListeners(AtkUtilClass* toolkit);

/// Tells a key that goes down or up; answers whether it was taken.
bool tellKeyListeners(const GdkEventKey& event);
