// The generated code is in the language C, whose constants other files see without being told.
extern "C" {
#include <wlr-layer-shell-client-protocol.h>
#include <wlr-layer-shell-protocol.c>  // NOLINT(bugprone-suspicious-include)
}
