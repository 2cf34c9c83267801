// The channel is reached through its five functions only: the shared library's dynamic symbol table, as nm
// reads it.

#include <gmock/gmock.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// The symbols that the library defines for others.
std::vector<std::string> ExportedSymbols() {
    std::vector<std::string> symbols;
    FILE* const pOutput =
        popen(NM " --dynamic --defined-only --demangle --format=posix " VEXABASE_LIBRARY, "r");
    if (pOutput == nullptr) return symbols;
    char szLine[4096];
    while (std::fgets(szLine, sizeof(szLine), pOutput) != nullptr) {
        symbols.emplace_back(szLine);
    }
    EXPECT_EQ(pclose(pOutput), 0);
    return symbols;
}

TEST(HiddenSymbols, TheFiveFunctionsAndTheReceiverAreExported) {
    const std::vector<std::string> symbols = ExportedSymbols();

    EXPECT_THAT(symbols, Contains(HasSubstr("KyRegisterReactor(KyEventReactor*)")));
    EXPECT_THAT(symbols, Contains(HasSubstr("KyUnRegisterReactor(KyEventReactor*)")));
    EXPECT_THAT(symbols, Contains(HasSubstr("KyPostEvent(wchar_t const*, void*, unsigned int)")));
    EXPECT_THAT(symbols, Contains(HasSubstr("KySendEvent(wchar_t const*, void*, unsigned int)")));
    EXPECT_THAT(symbols, Contains(HasSubstr("KyProcessPostEvents()")));
    EXPECT_THAT(symbols, Contains(HasSubstr("vtable for KyEventReactor")));
}

TEST(HiddenSymbols, TheQueueTheReactorListAndTheDeliveryAreNot) {
    const std::vector<std::string> symbols = ExportedSymbols();

    EXPECT_THAT(symbols, Not(Contains(HasSubstr("g_queneEvent"))));
    EXPECT_THAT(symbols, Not(Contains(HasSubstr("g_lstReactor"))));
    EXPECT_THAT(symbols, Not(Contains(HasSubstr("OnEvent"))));
}

}  // namespace
