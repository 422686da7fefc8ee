#pragma once

#include <functional>

/// Observes the server's answers to volumes set anywhere in this program. The handler is called
/// after the caller's own callback.
void setAcknowledgementHandler(std::function<void()> handler);
