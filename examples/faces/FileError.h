// What is wrong with a file, named.
#pragma once

#include <stdexcept>
#include <string>

namespace faces {

class FileError : public std::runtime_error {
public:
    FileError(const std::string& strFile, const std::string& strReason)
        : runtime_error(strFile + ": " + strReason) {}
};

}  // namespace faces
