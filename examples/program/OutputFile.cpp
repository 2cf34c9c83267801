#include "examples/program/OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "examples/program/Descriptor.h"

namespace program {
namespace {

void WriteBesideAndRename(const std::string& strTarget, const FileWriter& write) {
    std::string strBeside = strTarget + ".XXXXXX";
    Descriptor file(::mkstemp(strBeside.data()));
    try {
        write(file.Get());
        file.SetUsualRights();
        file.Close();
        if (std::rename(strBeside.c_str(), strTarget.c_str()) != 0) FailAsErrnoSays();
    } catch (...) {
        ::unlink(strBeside.c_str());
        throw;
    }
}

void WriteTo(int nDescriptor, const FileWriter& write) {
    Descriptor file(nDescriptor);
    write(file.Get());
    file.Close();
}

}  // namespace

void WriteWhole(const std::string& strFile, const FileWriter& write) {
    if (strFile == "-") return WriteTo(::dup(STDOUT_FILENO), write);
    std::error_code error;
    const auto status = std::filesystem::status(strFile, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return WriteTo(::open(strFile.c_str(), O_WRONLY | O_CLOEXEC), write);
    }
    // A link stays; what it names is replaced.
    const bool bLink = std::filesystem::is_symlink(std::filesystem::symlink_status(strFile, error));
    WriteBesideAndRename(bLink ? std::filesystem::weakly_canonical(strFile).string() : strFile, write);
}

void WriteWhole(const std::string& strFile, const std::string& strText) {
    WriteWhole(strFile, [&strText](int nDescriptor) {
        Descriptor file(::dup(nDescriptor));
        file.Write(strText);
        file.Close();
    });
}

}  // namespace program
