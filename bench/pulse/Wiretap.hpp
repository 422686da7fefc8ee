#pragma once

#include <functional>

/// Listens to the answers that the server gives to volumes set by anybody in this program. The
/// handler is called after whoever set it was told.
void setAcknowledgementHandler(std::function<void()> handler);
