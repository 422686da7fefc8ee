#pragma once

#include <gtk/gtk.h>

/// The widget that the lock screen makes of this plugin, one each time it locks: a LockScreenPage
/// in a window of its own. It wants whatever height the page has, and says nothing of its rows
/// before it is seen, as they are not read before. Registers the type for the module; again for the
/// same one, it is the same type.
GType lockScreenWidgetType(GTypeModule* module);
