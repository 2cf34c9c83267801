#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "VexaBase/event/KyScopedReactor.h"
#include "examples/faces/StageLog.h"
#include "examples/faces/Stages.h"
#include "examples/program/FileError.h"

namespace faces {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

class Listener : public KyEventReactor {
public:
    explicit Listener(unsigned int nMask) : KyEventReactor(nMask) {}

    void React(const wchar_t* pszName, void* pData) override {
        const std::wstring name = pszName;
        const auto& news = *static_cast<StageNews*>(pData);
        m_heard.push_back(std::string(name.begin(), name.end()) + ": " + news.m_pszStage + " " +
                          std::to_string(news.m_nStage) + "/" + std::to_string(news.m_nStages));
    }

    std::vector<std::string> m_heard;
};

TEST(FacesStages, AStageTellsOfItsBeginAndItsEnd) {
    Listener listener(StageMask);
    const KyScopedReactor listening(listener);
    Stages stages(2);

    const int nResult = stages.Run("one", [&] {
        listener.m_heard.emplace_back("at work");
        return 7;
    });
    stages.Run("two", [] { return 0; });

    EXPECT_EQ(nResult, 7);
    EXPECT_THAT(listener.m_heard, ElementsAre("stage begins: one 1/2", "at work", "stage ends: one 1/2",
                                              "stage begins: two 2/2", "stage ends: two 2/2"));
    EXPECT_THAT(stages.m_times,
                ElementsAre(testing::Pair("one", testing::Ge(0)), testing::Pair("two", testing::Ge(0))));
}

TEST(FacesStages, WhoWantsOtherKindsOfEventHearsNothing) {
    Listener listener(PartMask);
    const KyScopedReactor listening(listener);

    Stages(1).Run("one", [] { return 0; });

    EXPECT_THAT(listener.m_heard, testing::IsEmpty());
}

TEST(FacesStages, AStageThatFailsDoesNotEnd) {
    Listener listener(StageMask);
    const KyScopedReactor listening(listener);
    Stages stages(1);

    EXPECT_THROW(stages.Run("one", []() -> int { throw std::runtime_error("no"); }), std::runtime_error);

    EXPECT_THAT(listener.m_heard, ElementsAre("stage begins: one 1/1"));
    EXPECT_THAT(stages.m_times, testing::IsEmpty());
}

TEST(FacesStages, TheLogHasALineWithItsTimeForEachEvent) {
    std::string strFile = (std::filesystem::temp_directory_path() / "faces-log-XXXXXX").string();
    ::close(::mkstemp(strFile.data()));
    {
        StageLog log(strFile);
        Stages(1).Run("read", [] { return 0; });
        KySendEvent(WorkEnds, nullptr, StageMask);
        char szReason[] = "no reason";
        KySendEvent(WorkFails, szReason, StageMask);
    }
    Stages(1).Run("unheard", [] { return 0; });

    std::ifstream file(strFile);
    const std::string strLog(std::istreambuf_iterator<char>(file), {});
    EXPECT_THAT(strLog, MatchesRegex("\\[ *[0-9]+\\.[0-9] ms\\] read begins\n"
                                     "\\[ *[0-9]+\\.[0-9] ms\\] read ends after [0-9]+\\.[0-9] ms\n"
                                     "\\[ *[0-9]+\\.[0-9] ms\\] done\n"
                                     "\\[ *[0-9]+\\.[0-9] ms\\] failed: no reason\n"));
    std::filesystem::remove(strFile);
}

TEST(FacesStages, ALogThatCannotBeWrittenNamesItself) {
    EXPECT_THROW(StageLog("/none/log"), program::FileError);
    StageLog log("/dev/full");
    try {
        Stages(1).Run("read", [] { return 0; });
        ADD_FAILURE() << "nothing was thrown";
    } catch (const program::FileError& error) {
        EXPECT_THAT(error.what(), HasSubstr("/dev/full: No space left on device"));
    }
    EXPECT_NO_THROW(Stages(1).Run("read", [] { return 0; })) << "said once";
}

}  // namespace
}  // namespace faces
