// What KyParallelTasks gives back: whole objects, through the unsized global operator delete, with no
// destructor run.

#include <gmock/gmock.h>

#include <memory>
#include <new>
#include <vector>

#include "AllocationLog.h"
#include "VexaBase/task/KyParallelTask.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What `code` gives back.
template <class Code>
Deallocations GivenBackBy(Code code) {
    const AllocationLog log;
    code();
    return log.GivenBack();
}

class Plain final : public KyParallelTask {
public:
    ~Plain() { ++s_nDestroyed; }
    void Execute() override {}

    inline static int s_nDestroyed = 0;

private:
    [[maybe_unused]] long m_payload[4] = {};
};

class Mixin {
public:
    virtual ~Mixin() { ++s_nDestroyed; }

    inline static int s_nDestroyed = 0;

private:
    [[maybe_unused]] long m_payload[2] = {};
};

/// The task base is the second one: it sits in the middle of the object.
class SecondBase final : public Mixin, public KyParallelTask {
public:
    void Execute() override {}

private:
    [[maybe_unused]] long m_payload[3] = {};
};

class VirtualBase final : public Mixin, public virtual KyParallelTask {
public:
    void Execute() override {}
};

class Overaligned final : public Mixin, public KyParallelTask {
public:
    void Execute() override {}

private:
    alignas(64) [[maybe_unused]] char m_payload[64] = {};
};

TEST(KyParallelTasksStorage, ClearGivesEachTaskBackThroughTheUnsizedOperatorInOrder) {
    KyParallelTasks tasks;
    auto* const pFirst = new Plain;
    auto* const pSecond = new Plain;
    tasks.AddTask(pFirst);
    tasks.AddTask(pSecond);

    const Deallocations givenBack = GivenBackBy([&] { tasks.Clear(); });

    EXPECT_THAT(givenBack.m_unsized, ElementsAre(pFirst, pSecond));
    EXPECT_THAT(givenBack.m_others, IsEmpty());
}

TEST(KyParallelTasksStorage, ClearRunsNoDestructor) {
    KyParallelTasks tasks;
    tasks.AddTask(new Plain);
    tasks.AddTask(new SecondBase);
    const int nDestroyed = Plain::s_nDestroyed + Mixin::s_nDestroyed;

    tasks.Clear();

    EXPECT_EQ(Plain::s_nDestroyed + Mixin::s_nDestroyed, nDestroyed);
}

TEST(KyParallelTasksStorage, TheListsDestructorRunsNoneEither) {
    auto tasks = std::make_unique<KyParallelTasks>();
    tasks->AddTask(new Plain);
    tasks->AddTask(new SecondBase);
    const int nDestroyed = Plain::s_nDestroyed + Mixin::s_nDestroyed;

    tasks.reset();

    EXPECT_EQ(Plain::s_nDestroyed + Mixin::s_nDestroyed, nDestroyed);
}

TEST(KyParallelTasksStorage, TheListsDestructorGivesTheTasksBackThenTheVectorsBlock) {
    auto tasks = std::make_unique<KyParallelTasks>();
    auto* const pTask = new Plain;
    tasks->AddTask(pTask);
    void* const pBlock = tasks->m_tasks.data();

    Deallocations givenBack = GivenBackBy([&] { tasks->~KyParallelTasks(); });
    new (tasks.get()) KyParallelTasks;

    // The vector's allocator may use either operator.
    std::vector<void*>& blocks = givenBack.m_unsized;
    blocks.insert(blocks.end(), givenBack.m_others.begin(), givenBack.m_others.end());
    EXPECT_THAT(blocks, ElementsAre(pTask, pBlock));
}

TEST(KyParallelTasksStorage, ATaskBaseInTheMiddleOfItsObjectGivesTheWholeObjectBack) {
    KyParallelTasks tasks;
    auto* const pTask = new SecondBase;
    tasks.AddTask(pTask);
    ASSERT_NE(static_cast<void*>(tasks[0]), static_cast<void*>(pTask));

    const Deallocations givenBack = GivenBackBy([&] { tasks.Clear(); });

    EXPECT_THAT(givenBack.m_unsized, ElementsAre(pTask));
    EXPECT_THAT(givenBack.m_others, IsEmpty());
}

TEST(KyParallelTasksStorage, AVirtualTaskBaseGivesTheWholeObjectBack) {
    KyParallelTasks tasks;
    auto* const pTask = new VirtualBase;
    tasks.AddTask(pTask);
    ASSERT_NE(static_cast<void*>(tasks[0]), static_cast<void*>(pTask));

    const Deallocations givenBack = GivenBackBy([&] { tasks.Clear(); });

    EXPECT_THAT(givenBack.m_unsized, ElementsAre(pTask));
}

TEST(KyParallelTasksStorage, AnOveralignedTaskGoesThroughTheSameOperator) {
    KyParallelTasks tasks;
    auto* const pTask = new Overaligned;
    tasks.AddTask(pTask);

    const Deallocations givenBack = GivenBackBy([&] { tasks.Clear(); });

    EXPECT_THAT(givenBack.m_unsized, ElementsAre(pTask));
    EXPECT_THAT(givenBack.m_others, IsEmpty());
}

TEST(KyParallelTasksStorage, ANullTaskIsSkipped) {
    KyParallelTasks tasks;
    auto* const pTask = new Plain;
    tasks.AddTask(nullptr);
    tasks.AddTask(pTask);
    tasks.AddTask(nullptr);
    EXPECT_EQ(tasks.GetLength(), 3);
    EXPECT_EQ(tasks[0], nullptr);

    const Deallocations givenBack = GivenBackBy([&] { tasks.Clear(); });

    EXPECT_THAT(givenBack.m_unsized, ElementsAre(pTask));
    EXPECT_EQ(tasks.GetLength(), 0);
}

TEST(KyParallelTasksStorage, AFailedAddTaskLeavesTheListAsItWasAndTheTaskTheCallers) {
    KyParallelTasks tasks;
    auto* const pFirst = new Plain;
    tasks.AddTask(pFirst);
    const auto second = std::make_unique<Plain>();

    {
        const FailingAllocation failing(0);
        EXPECT_THROW(tasks.AddTask(second.get()), std::bad_alloc);
    }

    EXPECT_EQ(tasks.GetLength(), 1);
    EXPECT_EQ(tasks[0], pFirst);
    EXPECT_EQ(tasks.m_tasks.capacity(), 1u);
}

}  // namespace
