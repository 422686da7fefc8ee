#pragma once

#include <atk/atk.h>

/// The root of everything this program shows to assistive technology. Made with the first call,
/// which also answers to the accessibility library for the whole program; it lives as long as the
/// process. Another toolkit in the process keeps its own root: then that one is answered.
AtkObject* accessibleApplication();

/// Adds a window to the root, or takes it away. The root holds a reference meanwhile. Nothing
/// happens with the root of another toolkit, whose business its windows are.
void addToApplication(AtkObject* frame);
void removeFromApplication(AtkObject* frame);
