// The process environment as the application reads it.
#pragma once

#include <string>

namespace velmar::Env {

/// The home directory, computed at each call: VELMAR_HOME when set and not
/// empty, else HOME when set and not empty, else the password database entry.
std::string home();

/// The user's own home directory, never moved by VELMAR_HOME.
std::string userHome();

/// The user's login shell: SHELL when set and not empty, else /bin/zsh.
std::string loginShell();

/// The value of an environment variable; empty when unset.
std::string variable(const char* name);

}  // namespace velmar::Env
