#include "examples/faces/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace faces {
namespace {

[[noreturn]] void Fail() { throw std::runtime_error(std::generic_category().message(errno)); }

/// Closes on destruction; Close() also tells whether all went well.
class Descriptor {
public:
    explicit Descriptor(int nDescriptor) : m_nDescriptor(nDescriptor) {
        if (nDescriptor < 0) Fail();
    }
    ~Descriptor() {
        if (m_nDescriptor >= 0) ::close(m_nDescriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    void Write(const std::string& strText) const {
        for (std::size_t nDone = 0; nDone < strText.size();) {
            const ssize_t nWritten = ::write(m_nDescriptor, strText.data() + nDone, strText.size() - nDone);
            if (nWritten < 0 && errno == EINTR) continue;
            if (nWritten < 0) Fail();
            nDone += static_cast<std::size_t>(nWritten);
        }
    }

    /// Gives the file the rights that a newly created one would have.
    void SetUsualRights() const {
        const mode_t nMask = ::umask(0);
        ::umask(nMask);
        if (::fchmod(m_nDescriptor, 0666 & ~nMask) != 0) Fail();
    }

    void Close() {
        const int nDescriptor = m_nDescriptor;
        m_nDescriptor = -1;
        if (::close(nDescriptor) != 0) Fail();
    }

private:
    int m_nDescriptor;
};

void WriteBesideAndRename(const std::string& strTarget, const std::string& strText) {
    std::string strBeside = strTarget + ".XXXXXX";
    Descriptor file(::mkstemp(strBeside.data()));
    try {
        file.Write(strText);
        file.SetUsualRights();
        file.Close();
        if (std::rename(strBeside.c_str(), strTarget.c_str()) != 0) Fail();
    } catch (...) {
        ::unlink(strBeside.c_str());
        throw;
    }
}

}  // namespace

void WriteWhole(const std::string& strFile, const std::string& strText) {
    if (strFile == "-") {
        Descriptor file(::dup(STDOUT_FILENO));
        file.Write(strText);
        return file.Close();
    }
    std::error_code error;
    const auto status = std::filesystem::status(strFile, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        Descriptor file(::open(strFile.c_str(), O_WRONLY | O_CLOEXEC));
        file.Write(strText);
        return file.Close();
    }
    // A link stays; what it names is replaced.
    const bool bLink = std::filesystem::is_symlink(std::filesystem::symlink_status(strFile, error));
    WriteBesideAndRename(bLink ? std::filesystem::weakly_canonical(strFile).string() : strFile, strText);
}

}  // namespace faces
