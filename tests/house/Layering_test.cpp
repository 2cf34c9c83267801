// Who may include whom. Every folder of the library may use containers/ and KyConfig.h, event/ also string/;
// nothing else crosses, nothing runs in a circle, and beyond the library there is the standard library only.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

/// What each file includes, as written between quotes, or with its angle brackets. Files are named from the
/// include root: "VexaBase/graph/KyGraph.h".
using Includes = std::map<std::string, std::vector<std::string>>;

/// The subsystem a file belongs to; empty for a file directly under VexaBase/.
std::string FolderOf(const std::string& file) {
    const std::string parent = std::filesystem::path(file).parent_path().string();
    return parent == "VexaBase" ? "" : parent.substr(std::string("VexaBase/").size());
}

bool MayUse(const std::string& from, const std::string& to) {
    return from == to || to.empty() || (!from.empty() && to == "containers") ||
           (from == "event" && to == "string");
}

/// The standard library's headers have neither a path nor a suffix.
bool IsStandard(const std::string& include) {
    return include.front() == '<' && include.find_first_of("./") == std::string::npos;
}

std::string ComplaintAbout(const std::string& file, const std::string& include) {
    if (IsStandard(include)) return "";
    if (include.rfind("VexaBase/", 0) != 0)
        return file + " includes " + include + ", which is not the library's";
    if (!MayUse(FolderOf(file), FolderOf(include))) return file + " may not include " + include;
    return "";
}

/// Follows the includes of a file depth first; `open` is the way to it.
void FindCircle(const Includes& includes, const std::string& file, std::vector<std::string>& open,
                std::set<std::string>& done, std::vector<std::string>& complaints) {
    if (std::find(open.begin(), open.end(), file) != open.end()) {
        complaints.push_back(open.back() + " closes a circle by including " + file);
        return;
    }
    if (!done.insert(file).second || includes.count(file) == 0) return;

    open.push_back(file);
    for (const std::string& include : includes.at(file)) {
        FindCircle(includes, include, open, done, complaints);
    }
    open.pop_back();
}

std::vector<std::string> Complaints(const Includes& includes) {
    std::vector<std::string> complaints;
    std::set<std::string> done;
    for (const auto& [file, included] : includes) {
        for (const std::string& include : included) {
            const std::string complaint = ComplaintAbout(file, include);
            if (!complaint.empty()) complaints.push_back(complaint);
        }
        std::vector<std::string> open;
        FindCircle(includes, file, open, done, complaints);
    }
    return complaints;
}

std::vector<std::string> IncludesIn(std::istream& text) {
    static const std::regex directive(R"re(^\s*#\s*include\s*(?:"([^"]*)"|(<[^>]*>)).*)re");
    std::vector<std::string> included;
    std::smatch match;
    for (std::string line; std::getline(text, line);) {
        if (std::regex_match(line, match, directive))
            included.push_back(match[1].matched ? match[1] : match[2]);
    }
    return included;
}

Includes IncludesOfTheLibrary() {
    const std::filesystem::path root(VEXABASE_SOURCE_DIR);
    Includes includes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / "VexaBase")) {
        const std::string suffix = entry.path().extension().string();
        if (suffix != ".h" && suffix != ".cpp") continue;
        std::ifstream file(entry.path());
        includes[entry.path().lexically_relative(root).string()] = IncludesIn(file);
    }
    return includes;
}

TEST(Layering, AFolderMayUseItselfTheContainersTheConfigurationAndTheStandardLibrary) {
    const Includes includes{
        {"VexaBase/KyConfig.h", {"<cstdio>"}},
        {"VexaBase/containers/KyList.h", {"VexaBase/KyConfig.h", "<utility>"}},
        {"VexaBase/graph/KyGraphArc.cpp", {"VexaBase/graph/KyGraphArc.h", "VexaBase/containers/KyList.h"}},
        {"VexaBase/event/KyEventReactor.h", {"VexaBase/string/KyString.h"}},
    };

    EXPECT_THAT(Complaints(includes), IsEmpty());
}

TEST(Layering, AnUpwardArrowIsAnOffence) {
    EXPECT_THAT(Complaints({{"VexaBase/containers/KyList.h", {"VexaBase/graph/KyGraph.h"}}}),
                ElementsAre("VexaBase/containers/KyList.h may not include VexaBase/graph/KyGraph.h"));
    EXPECT_THAT(Complaints({{"VexaBase/KyConfig.h", {"VexaBase/containers/KyList.h"}}}), SizeIs(1));
}

TEST(Layering, ACrossingArrowIsAnOffence) {
    EXPECT_THAT(Complaints({{"VexaBase/ga/GA_Gene.cpp", {"VexaBase/string/KyString.h"}}}),
                ElementsAre("VexaBase/ga/GA_Gene.cpp may not include VexaBase/string/KyString.h"));
    EXPECT_THAT(Complaints({{"VexaBase/string/KyString.h", {"VexaBase/event/KyEventReactor.h"}}}), SizeIs(1));
}

TEST(Layering, ACircleInsideAFolderIsAnOffence) {
    const Includes includes{
        {"VexaBase/containers/A.h", {"VexaBase/containers/B.h"}},
        {"VexaBase/containers/B.h", {"VexaBase/containers/C.h"}},
        {"VexaBase/containers/C.h", {"VexaBase/containers/A.h"}},
    };

    EXPECT_THAT(Complaints(includes),
                ElementsAre("VexaBase/containers/C.h closes a circle by including VexaBase/containers/A.h"));
}

TEST(Layering, AHeaderFromOutsideTheStandardLibraryIsAnOffence) {
    EXPECT_THAT(Complaints({{"VexaBase/string/KyString.cpp", {"<boost/format.hpp>"}}}),
                ElementsAre(AllOf(HasSubstr("KyString.cpp"), HasSubstr("<boost/format.hpp>"))));
    EXPECT_THAT(Complaints({{"VexaBase/task/KyPlatform.cpp", {"<unistd.h>"}}}), SizeIs(1));
    EXPECT_THAT(Complaints({{"VexaBase/task/KyPlatform.cpp", {"KyPlatform.h"}}}), SizeIs(1));
}

TEST(Layering, IncludesAreReadWhereverTheSpacesAre) {
    std::istringstream text(
        "#include \"VexaBase/KyConfig.h\"\n"
        "// #include <nothing>\n"
        "  #  include <vector>  // why\n"
        "int include = 0;\n");

    EXPECT_THAT(IncludesIn(text), ElementsAre("VexaBase/KyConfig.h", "<vector>"));
}

TEST(Layering, TheLibraryHasNoOffence) {
    const Includes includes = IncludesOfTheLibrary();

    std::set<std::string> folders;
    for (const auto& file : includes) {
        folders.insert(FolderOf(file.first));
    }
    EXPECT_THAT(folders, IsSupersetOf({"", "containers", "graph"}));
    EXPECT_THAT(Complaints(includes), IsEmpty());
}

}  // namespace
