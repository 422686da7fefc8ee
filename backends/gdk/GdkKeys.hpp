#pragma once

#include "platform/uikit/UIEvent.hpp"

#include <gdk/gdk.h>

#include <optional>

/// The views' key behind a key press; nullopt for a key they do not know, and for one held with
/// Control, Alt or Super, which belongs to the desktop.
std::optional<UIKey> keyOf(const GdkEventKey& event);
/// Whether the key is typed alone or with Shift: with other modifiers it belongs to the desktop.
bool isTypedAlone(const GdkEventKey& event);
