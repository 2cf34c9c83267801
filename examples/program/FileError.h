// What is wrong with a file, named.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>

namespace program {

class FileError : public std::runtime_error {
public:
    FileError(const std::string& strFile, const std::string& strReason)
        : runtime_error(strFile + ": " + strReason) {}
};

/// Does something about a file; what that throws becomes a FileError.
template <class Work>
auto About(const std::string& strFile, const Work& work) {
    try {
        return work();
    } catch (const std::exception& error) {
        throw FileError(strFile, error.what());
    }
}

}  // namespace program
