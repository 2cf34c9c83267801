#include "examples/program/InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>

#include "examples/program/Descriptor.h"

namespace program {

std::string ReadWhole(const std::string& strFile) {
    Descriptor file(strFile == "-" ? ::dup(STDIN_FILENO) : ::open(strFile.c_str(), O_RDONLY | O_CLOEXEC));
    std::string strText;
    std::array<char, 1 << 16> block;
    for (;;) {
        const ssize_t n = ::read(file.Get(), block.data(), block.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) FailAsErrnoSays();
        if (n == 0) return strText;
        strText.append(block.data(), static_cast<std::size_t>(n));
    }
}

}  // namespace program
