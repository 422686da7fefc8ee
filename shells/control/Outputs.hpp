#pragma once

#include "shells/control/Output.hpp"
#include "shells/control/Request.hpp"
#include "shells/control/Service.hpp"

namespace control {

/// Executes "outputs on|off|status|adopt" on a server that is ready; results go to `output`, and
/// problems to standard error. Returns the exit status, without the state of `output`.
int executeOutputs(const Request& request, Service& service, Output& output);

}  // namespace control
