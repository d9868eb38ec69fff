// Environment lookups: the home directory and plain variables.
#include "Env.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace velmar::Env {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

namespace {

// A field of our own password database entry; empty when there is none.
template <typename Field> std::string passwdField(Field field) {
    long size = ::sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(size > 0 ? static_cast<std::size_t>(size) : 16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->*field != nullptr)
        return found->*field;
    return {};
}

}  // namespace

std::string userHome() {
    std::string home = variable("HOME");
    return home.empty() ? passwdField(&passwd::pw_dir) : home;
}

std::string loginShell() {
    std::string shell = variable("SHELL");
    return shell.empty() ? std::string("/bin/zsh") : shell;
}

std::string home() {
    std::string moved = variable("VELMAR_HOME");
    return moved.empty() ? userHome() : moved;
}

}  // namespace velmar::Env
