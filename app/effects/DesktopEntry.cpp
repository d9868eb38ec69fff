// Finding and reading desktop entries, after the freedesktop.org Desktop
// Entry format: one [Desktop Entry] group of key=value lines, string escapes
// in values, and an Exec command with its own quoting and field codes.
#include "DesktopEntry.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "Env.h"

namespace velmar::DesktopEntry {
namespace {

std::string trimmed(std::string_view s) {
    const auto first = s.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    const auto last = s.find_last_not_of(" \t\r");
    return std::string(s.substr(first, last - first + 1));
}

// The escapes every string value may hold: \s \n \t \r \\.
std::string unescapeValue(std::string_view v) {
    std::string out;
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (v[i] != '\\' || i + 1 == v.size()) {
            out += v[i];
            continue;
        }
        const char next = v[++i];
        switch (next) {
        case 's': out += ' '; break;
        case 'n': out += '\n'; break;
        case 't': out += '\t'; break;
        case 'r': out += '\r'; break;
        case '\\': out += '\\'; break;
        default:
            // Not a value escape: leave it for the Exec quoting rules.
            out += '\\';
            out += next;
        }
    }
    return out;
}

std::vector<std::string> splitColons(const std::string& list) {
    std::vector<std::string> parts;
    std::stringstream stream(list);
    std::string part;
    while (std::getline(stream, part, ':'))
        if (!part.empty())
            parts.push_back(part);
    return parts;
}

bool isExecutableFile(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

struct Token {
    std::string text;
    bool quoted = false;
};

std::optional<std::vector<Token>> tokenize(std::string_view exec) {
    std::vector<Token> tokens;
    Token current;
    bool inToken = false;
    bool inQuotes = false;
    for (std::size_t i = 0; i < exec.size(); ++i) {
        const char c = exec[i];
        if (inQuotes) {
            if (c == '"') {
                inQuotes = false;
            } else if (c == '\\' && i + 1 < exec.size()) {
                current.text += exec[++i];
            } else {
                current.text += c;
            }
        } else if (c == ' ' || c == '\t' || c == '\n') {
            if (inToken)
                tokens.push_back(std::move(current));
            current = Token{};
            inToken = false;
        } else if (c == '"') {
            inQuotes = true;
            inToken = true;
            current.quoted = true;
        } else if (c == '\\' && i + 1 < exec.size()) {
            current.text += exec[++i];
            inToken = true;
        } else {
            current.text += c;
            inToken = true;
        }
    }
    if (inQuotes)
        return std::nullopt;
    if (inToken)
        tokens.push_back(std::move(current));
    return tokens;
}

}  // namespace

std::vector<std::string> applicationDirs() {
    std::vector<std::string> dirs;
    std::string dataDirs = Env::variable("XDG_DATA_DIRS");
    if (dataDirs.empty())
        dataDirs = "/usr/local/share:/usr/share";
    for (const auto& dir : splitColons(dataDirs))
        dirs.push_back(dir + "/applications");
    std::string dataHome = Env::variable("XDG_DATA_HOME");
    if (dataHome.empty()) {
        const std::string home = Env::userHome();
        if (!home.empty())
            dataHome = home + "/.local/share";
    }
    if (!dataHome.empty())
        dirs.push_back(dataHome + "/applications");
    return dirs;
}

std::optional<Entry> parse(std::string_view text, std::string file) {
    std::optional<std::string> exec;
    std::string icon;
    bool hidden = false;
    bool inMainGroup = false;
    std::size_t start = 0;
    while (start <= text.size()) {
        auto end = text.find('\n', start);
        if (end == std::string_view::npos)
            end = text.size();
        const std::string line = trimmed(text.substr(start, end - start));
        start = end + 1;
        if (line.empty() || line[0] == '#')
            continue;
        if (line[0] == '[') {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        if (!inMainGroup)
            continue;
        const auto eq = line.find('=');
        if (eq == std::string::npos)
            continue;
        const std::string key = trimmed(std::string_view(line).substr(0, eq));
        const std::string value = trimmed(std::string_view(line).substr(eq + 1));
        if (key == "Exec" && !exec)
            exec = unescapeValue(value);
        else if (key == "Icon" && icon.empty())
            icon = unescapeValue(value);
        else if (key == "Hidden")
            hidden = value == "true";
    }
    if (!exec || exec->empty() || hidden)
        return std::nullopt;
    return Entry{std::move(file), std::move(*exec), std::move(icon)};
}

std::optional<Entry> find(std::span<const std::string> dirs,
                          std::span<const std::string_view> ids) {
    for (const auto& dir : dirs) {
        for (const auto id : ids) {
            const std::string file = dir + "/" + std::string(id);
            std::ifstream in(file, std::ios::binary);
            if (!in)
                continue;
            std::ostringstream contents;
            contents << in.rdbuf();
            if (auto entry = parse(contents.str(), file))
                return entry;
        }
    }
    return std::nullopt;
}

std::optional<std::vector<std::string>> commandLine(std::string_view exec, std::string_view url) {
    auto tokens = tokenize(exec);
    if (!tokens)
        return std::nullopt;
    std::vector<std::string> args;
    bool tookUrl = false;
    for (const auto& token : *tokens) {
        std::string arg;
        bool onlyRemovedCodes = !token.text.empty();
        for (std::size_t i = 0; i < token.text.size(); ++i) {
            const char c = token.text[i];
            if (c != '%' || i + 1 == token.text.size()) {
                arg += c;
                onlyRemovedCodes = false;
                continue;
            }
            const char code = token.text[++i];
            if (code == 'u' || code == 'U' || code == 'f' || code == 'F') {
                arg += url;
                tookUrl = true;
                onlyRemovedCodes = false;
            } else if (code == '%') {
                arg += '%';
                onlyRemovedCodes = false;
            }
        }
        // "%i" standing alone leaves no empty argument behind; a quoted ""
        // written as such stays.
        if (arg.empty() && onlyRemovedCodes)
            continue;
        if (arg.empty() && !token.quoted && token.text.empty())
            continue;
        args.push_back(std::move(arg));
    }
    if (args.empty())
        return std::nullopt;
    if (!tookUrl)
        args.emplace_back(url);
    return args;
}

std::optional<std::string> locate(const std::string& program, std::string_view searchPath) {
    if (program.empty())
        return std::nullopt;
    if (program.find('/') != std::string::npos)
        return program;
    for (const auto& dir : splitColons(std::string(searchPath))) {
        const std::string candidate = dir + "/" + program;
        if (isExecutableFile(candidate))
            return candidate;
    }
    return std::nullopt;
}

}  // namespace velmar::DesktopEntry
