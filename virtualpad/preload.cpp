// SPDX-License-Identifier: MIT
#include "preload.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include <link.h>
#include <unistd.h>

namespace
{
constexpr const char *library = "libumockdev-preload.so.0";
constexpr const char *attempted = "GAMEPAD_PRELOAD_ATTEMPTED";

// The test bed's sockets lie below the temporary folder, and a socket's path has room for 107 characters.
void keepTemporaryFolderShort()
{
    constexpr std::size_t longest = 50;
    const char *folder = std::getenv("TMPDIR");
    if (folder && std::strlen(folder) > longest)
        ::setenv("TMPDIR", "/tmp", 1);
}
bool isLoaded()
{
    const auto isTheOne = [](dl_phdr_info *object, std::size_t, void *) {
        return std::string_view(object->dlpi_name).find(library) != std::string_view::npos ? 1 : 0;
    };
    return ::dl_iterate_phdr(isTheOne, nullptr) != 0;
}
} // namespace

bool enterMockedMachine(char *argv[])
{
    if (isLoaded()) {
        ::unsetenv(attempted);
        return true;
    }
    if (std::getenv(attempted)) {
        std::fprintf(stderr,
                     "The library %s could not be loaded in front of this program; "
                     "install umockdev.\n",
                     library);
        return false;
    }
    keepTemporaryFolderShort();
    const char *others = std::getenv("LD_PRELOAD");
    const std::string all = others && *others ? library + std::string(":") + others : library;
    ::setenv("LD_PRELOAD", all.c_str(), 1);
    ::setenv(attempted, "1", 1);
    ::execv("/proc/self/exe", argv);
    std::fprintf(stderr, "This program could not be started again under %s: %s\n", library,
                 std::strerror(errno));
    return false;
}
