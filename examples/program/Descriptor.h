// An open file of the operating system.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace program {

/// Throws std::runtime_error with the reason for which the last call of the system failed.
[[noreturn]] inline void FailAsErrnoSays() {
    throw std::runtime_error(std::generic_category().message(errno));
}

/// Closes on destruction; Close() also tells whether all went well. What fails throws std::runtime_error with
/// the reason.
class Descriptor {
public:
    /// Takes over what open() and the like gave back, an error included.
    explicit Descriptor(int nDescriptor) : m_nDescriptor(nDescriptor) {
        if (nDescriptor < 0) FailAsErrnoSays();
    }
    ~Descriptor() {
        if (m_nDescriptor >= 0) ::close(m_nDescriptor);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Get() const { return m_nDescriptor; }

    void Write(const std::string& strText) const {
        for (std::size_t nDone = 0; nDone < strText.size();) {
            const ssize_t nWritten = ::write(m_nDescriptor, strText.data() + nDone, strText.size() - nDone);
            if (nWritten < 0 && errno == EINTR) continue;
            if (nWritten < 0) FailAsErrnoSays();
            nDone += static_cast<std::size_t>(nWritten);
        }
    }

    /// Gives the file the rights that a newly created one would have.
    void SetUsualRights() const {
        const mode_t nMask = ::umask(0);
        ::umask(nMask);
        if (::fchmod(m_nDescriptor, 0666 & ~nMask) != 0) FailAsErrnoSays();
    }

    void Close() {
        const int nDescriptor = m_nDescriptor;
        m_nDescriptor = -1;
        if (::close(nDescriptor) != 0) FailAsErrnoSays();
    }

private:
    int m_nDescriptor;
};

}  // namespace program
