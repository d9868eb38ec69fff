#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "Headless.h"

int main(int argc, char** argv) {
    bool headless = false;
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--headless") == 0) headless = true;
    if (!headless) {
        std::fprintf(stderr, "velmar: the window is not built yet; run with --headless\n");
        return 1;
    }
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(std::cin, line)) lines.push_back(line);
    for (const auto& out : velmar::Headless::run(lines)) {
        std::fwrite(out.data(), 1, out.size(), stdout);
        std::fputc('\n', stdout);
    }
    return 0;
}
