// The fault harness. A table lists operations, a line each: a name, what makes the object's state, the
// operation, and what a fault leaves:
//
//     {"Append", FourElements, [](List& s) { s.m_list.Append(s.m_x); }, Kept},
//
// The one test of EveryOperation_test.cpp runs each line with the first, the second, ... passage of every kind
// of fault point failing, alone or with all that follow, until the operation meets no more of them. Each time
// the exception must come out, nothing may leak, the object must be in the promised state and consistent, and
// the operation must succeed when it is tried again.
//
// A state is a class derived from Subject that says, in words,
//   Words()     everything that a caller can observe
//   Contents()  the same without cursors and spare room
//   Fault()     the first invariant that does not hold, empty when all do
// and owns all that it names. Making these texts is no part of the operation, so an operation hands its result
// over as a number.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <ostream>
#include <string>
#include <vector>

#include "AllocationLog.h"
#include "FaultPoints.h"

/// What a fault leaves, and what a second try gives.
enum class Left {
    Same,     // the state as it was; then the ordinary result
    Kept,     // the contents as they were, the cursor anywhere; then the ordinary result
    Sound,    // a consistent object; then the ordinary result
    Changed,  // a consistent object, on which the operation succeeds
};

/// The promise of an operation.
struct Promise {
    Left m_left = Left::Same;
    Left m_leftByElements = m_left;
    Left m_leftByHooks = m_left;
    Left m_leftWithoutMemory = m_left;
    bool m_bMayBeLost = false;
    bool m_bHasFaultPoints = true;

    /// The same, but this where it is an element that throws.
    constexpr Promise ButByElements(Left left) const {
        Promise promise = *this;
        promise.m_leftByElements = left;
        return promise;
    }

    /// The same, but this where it is one of the application's operations that throws.
    constexpr Promise ButByHooks(Left left) const {
        Promise promise = *this;
        promise.m_leftByHooks = left;
        return promise;
    }

    /// The same, but a failed growth may leave the object good for destruction only.
    constexpr Promise OrLost() const {
        Promise promise = *this;
        promise.m_bMayBeLost = true;
        return promise;
    }

    /// The same, but this where there is no more memory at all.
    constexpr Promise ButWithoutMemory(Left left) const {
        Promise promise = *this;
        promise.m_leftWithoutMemory = left;
        return promise;
    }

    constexpr Left LeftBy(FaultKind kind, Faults faults) const {
        switch (kind) {
            case FaultKind::Allocation:
                return faults == Faults::Once ? m_left : m_leftWithoutMemory;
            case FaultKind::Element:
                return m_leftByElements;
            case FaultKind::Hook:
                return m_leftByHooks;
            case FaultKind::Comparison:
                break;
        }
        return m_left;
    }
};

constexpr Promise Same{Left::Same};
constexpr Promise Kept{Left::Kept};
constexpr Promise Sound{Left::Sound};
constexpr Promise Changed{Left::Changed};
constexpr Promise CannotFail{Left::Same, Left::Same, Left::Same,
                             Left::Same, false,      false};  // meets no fault point

/// What states have in common.
class Subject {
public:
    Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;

    /// Whether a failed growth has left it good for destruction only.
    bool IsLost() const { return false; }

    long m_nResult = 0;  // what the operation returned
};

template <class State>
struct Operation {
    const char* m_szName;
    void (*m_pfnMake)(State&);
    void (*m_pfnOperate)(State&);
    Promise m_promise;
};

/// Live objects of the test's own classes.
class Counted {
public:
    Counted() { ++s_nLive; }
    Counted(const Counted&) { ++s_nLive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --s_nLive; }

    inline static long s_nLive = 0;
};

/// One operation on one kind of state.
template <class State>
class FaultRun {
public:
    explicit FaultRun(const Operation<State>& operation) : m_operation(operation) {}

    void Run() {
        {
            State state;
            m_operation.m_pfnMake(state);
            m_operation.m_pfnOperate(state);
            ASSERT_EQ(state.Fault(), "");
            m_strOrdinary = state.Words();
        }
        long nFaults = 0;
        for (const FaultKind kind : g_faultKinds) {
            for (const Faults faults : {Faults::Once, Faults::FromThenOn}) {
                for (long k = 1; HappensAt(kind, k, faults); ++k) {
                    ++nFaults;
                    if (testing::Test::HasFailure()) {
                        return;
                    }
                }
            }
        }
        EXPECT_EQ(nFaults != 0, m_operation.m_promise.m_bHasFaultPoints) << nFaults << " faults";
    }

private:
    /// Runs the operation with one fault ordered; false when it does not come to that.
    bool HappensAt(FaultKind kind, long k, Faults faults) {
        SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", passage " + std::to_string(k) +
                     (faults == Faults::Once ? " alone" : " and all that follow"));
        const long nBlocks = LiveBlocks();
        const long nObjects = Counted::s_nLive;
        bool bHappened = false;
        {
            State state;
            m_operation.m_pfnMake(state);
            bHappened = Try(state, kind, k, faults);
        }
        if (!testing::Test::HasFailure()) {  // which would have been written down
            EXPECT_EQ(LiveBlocks(), nBlocks);
            EXPECT_EQ(Counted::s_nLive, nObjects);
        }
        return bHappened;
    }

    bool Try(State& state, FaultKind kind, long k, Faults faults) {
        const std::string strWords = state.Words();
        const std::string strContents = state.Contents();
        const std::string strFault = state.Fault();  // a changed key may be out of order
        bool bHappened = false;
        bool bCaught = false;
        {
            const FaultAt fault(kind, k, faults);
            try {
                m_operation.m_pfnOperate(state);
            } catch (const std::bad_alloc&) {
                bCaught = kind == FaultKind::Allocation;
            } catch (const OrderedFault&) {
                bCaught = kind != FaultKind::Allocation;
            }
            bHappened = fault.HasHappened();
        }
        // Memory that an operation can do without may be refused without anybody seeing it.
        EXPECT_TRUE(bCaught == bHappened || (bHappened && kind == FaultKind::Allocation));
        if (!bCaught) {
            EXPECT_EQ(state.Fault(), "");
            EXPECT_EQ(state.Words(), m_strOrdinary);
            return bHappened;
        }
        const Left left = m_operation.m_promise.LeftBy(kind, faults);
        if (left == Left::Same || left == Left::Kept) {
            EXPECT_EQ(state.Contents(), strContents);
        }
        if (state.IsLost()) {
            EXPECT_TRUE(m_operation.m_promise.m_bMayBeLost);
            return true;
        }
        if (left == Left::Same) {
            EXPECT_EQ(state.Words(), strWords);
        }
        EXPECT_TRUE(state.Fault().empty() || state.Fault() == strFault) << state.Fault();

        m_operation.m_pfnOperate(state);

        EXPECT_EQ(state.Fault(), "");
        if (left != Left::Changed) {
            EXPECT_EQ(state.Words(), m_strOrdinary);
        }
        return true;
    }

    const Operation<State>& m_operation;
    std::string m_strOrdinary;  // what an undisturbed run comes to
};

/// An operation of some kind of state, for the one test that all tables share.
struct AnyOperation {
    std::string m_strName;
    std::function<void()> m_run;
};

inline void PrintTo(const AnyOperation& operation, std::ostream* pOut) { *pOut << operation.m_strName; }

class EveryOperation : public testing::TestWithParam<AnyOperation> {
public:
    static std::string NameOf(const testing::TestParamInfo<AnyOperation>& info) {
        return info.param.m_strName;
    }
};

template <class State, std::size_t nOperations>
std::vector<AnyOperation> OperationsOf(const Operation<State> (&table)[nOperations]) {
    std::vector<AnyOperation> operations;
    for (const Operation<State>& operation : table) {
        operations.push_back({operation.m_szName, [&operation] { FaultRun<State>(operation).Run(); }});
    }
    return operations;
}

/// Runs a table under a name of its own.
#define RUN_UNDER_FAULTS(name, table)                                                      \
    INSTANTIATE_TEST_SUITE_P(name, EveryOperation, testing::ValuesIn(OperationsOf(table)), \
                             EveryOperation::NameOf)
