#pragma once

namespace shell {

/// Lets a write to a reader that has gone fail instead of ending the program: a closed terminal
/// must not take the mixer with it at the next line of the log. For programs, at their start; a
/// plugin leaves the signals of its process alone.
void ignoreBrokenPipes();

}  // namespace shell
