// Tasks and their list: the order of execution, what belongs to whom, and what Clear does and does not do.

#include "VexaBase/task/KyParallelTask.h"

#include <gmock/gmock.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/rx/Layout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes its number down.
class Note final : public KyParallelTask {
public:
    Note(std::vector<int>& record, int n) : m_pRecord(&record), m_n(n) {}
    void Execute() override { m_pRecord->push_back(m_n); }

private:
    std::vector<int>* m_pRecord;
    int m_n;
};

/// Tells how it was called.
class Caller final : public KyParallelTask {
public:
    explicit Caller(std::vector<std::string>& calls) : m_pCalls(&calls) {}
    void run() override { m_pCalls->push_back("run"); }
    void Execute() override { m_pCalls->push_back("Execute"); }

private:
    std::vector<std::string>* m_pCalls;
};

class Failing final : public KyParallelTask {
public:
    void Execute() override { throw std::runtime_error("no"); }
};

// One task
// ------------------------------------------------------------------------------------------------------------

TEST(KyParallelTask, StartReturnsTrueOnceTheWorkIsDone) {
    std::vector<int> record;
    Note task(record, 1);

    const bool bStarted = task.Start();

    EXPECT_TRUE(bStarted);
    EXPECT_THAT(record, ElementsAre(1));
}

TEST(KyParallelTask, WaitDoesNothing) {
    std::vector<int> record;
    Note task(record, 1);

    task.Wait();
    EXPECT_THAT(record, IsEmpty());

    task.Start();
    task.Wait();
    task.Wait();
    EXPECT_THAT(record, ElementsAre(1));
}

TEST(KyParallelTask, EveryStartRunsTheWorkAgain) {
    std::vector<int> record;
    Note task(record, 1);

    task.Start();
    task.Start();

    EXPECT_THAT(record, ElementsAre(1, 1));
}

TEST(KyParallelTask, RunCallsTheDerivedExecute) {
    std::vector<int> record;
    Note task(record, 1);

    task.run();

    EXPECT_THAT(record, ElementsAre(1));
}

TEST(KyParallelTask, StartCallsExecuteAndNotRun) {
    std::vector<std::string> calls;
    Caller task(calls);

    static_cast<KyParallelTask&>(task).Start();

    EXPECT_THAT(calls, ElementsAre("Execute"));
}

TEST(KyParallelTask, StartPassesTheTasksExceptionThrough) {
    Failing task;

    EXPECT_THROW(task.Start(), std::runtime_error);
}

// The list
// ------------------------------------------------------------------------------------------------------------

TEST(KyParallelTasks, ANewListIsEmpty) {
    const KyParallelTasks tasks;

    EXPECT_EQ(tasks.GetLength(), 0);
    EXPECT_THAT(tasks.m_tasks, IsEmpty());
    EXPECT_EQ(tasks.m_tasks.capacity(), 0u);
}

TEST(KyParallelTasks, RunOnAnEmptyListDoesNothing) {
    KyParallelTasks tasks;

    tasks.Run();

    EXPECT_EQ(tasks.GetLength(), 0);
}

TEST(KyParallelTasks, ClearOnAnEmptyListDoesNothing) {
    KyParallelTasks tasks;

    tasks.Clear();
    tasks.Clear();

    EXPECT_EQ(tasks.GetLength(), 0);
}

TEST(KyParallelTasks, ItsOneTaskRuns) {
    std::vector<int> record;
    KyParallelTasks tasks;
    tasks.AddTask(new Note(record, 7));

    tasks.Run();

    EXPECT_EQ(tasks.GetLength(), 1);
    EXPECT_THAT(record, ElementsAre(7));
}

TEST(KyParallelTasks, TasksRunInTheOrderOfAddingAndStayForAnotherRun) {
    std::vector<int> record;
    KyParallelTasks tasks;
    for (const int n : {1, 2, 3}) {
        tasks.AddTask(new Note(record, n));
    }

    tasks.Run();
    EXPECT_THAT(record, ElementsAre(1, 2, 3));
    EXPECT_EQ(tasks.GetLength(), 3);

    tasks.Run();
    EXPECT_THAT(record, ElementsAre(1, 2, 3, 1, 2, 3));
    EXPECT_EQ(tasks.GetLength(), 3);
}

TEST(KyParallelTasks, IndexedTasksAreTheOnesAdded) {
    std::vector<int> record;
    auto* const pFirst = new Note(record, 1);
    auto* const pSecond = new Note(record, 2);
    KyParallelTasks tasks;
    tasks.AddTask(pFirst);
    tasks.AddTask(pSecond);

    const KyParallelTasks& constTasks = tasks;

    EXPECT_EQ(constTasks[0], pFirst);
    EXPECT_EQ(constTasks[1], pSecond);
    EXPECT_EQ(constTasks.GetLength(), 2);
}

TEST(KyParallelTasks, RunCallsExecuteAndNeitherRunNorStart) {
    std::vector<std::string> calls;
    KyParallelTasks tasks;
    tasks.AddTask(new Caller(calls));

    tasks.Run();

    EXPECT_THAT(calls, ElementsAre("Execute"));
}

TEST(KyParallelTasks, EachTaskIsFinishedBeforeTheNextBegins) {
    class Bracket final : public KyParallelTask {
    public:
        Bracket(std::string& text, char ch) : m_pText(&text), m_ch(ch) {}
        void Execute() override {
            *m_pText += '(';
            *m_pText += m_ch;
            *m_pText += ')';
        }

    private:
        std::string* m_pText;
        char m_ch;
    };
    std::string text;
    KyParallelTasks tasks;
    for (const char ch : {'a', 'b', 'c'}) {
        tasks.AddTask(new Bracket(text, ch));
    }

    tasks.Run();

    EXPECT_EQ(text, "(a)(b)(c)");
}

TEST(KyParallelTasks, ATaskAddedTwiceRunsTwice) {
    std::vector<int> record;
    Note task(record, 5);
    KyParallelTasks tasks;
    tasks.AddTask(&task);
    tasks.AddTask(&task);

    tasks.Run();

    EXPECT_EQ(tasks.GetLength(), 2);
    EXPECT_THAT(record, ElementsAre(5, 5));
    tasks.m_tasks.clear();  // the task is not the heap's
}

TEST(KyParallelTasks, ATasksExceptionLeavesTheRestUnrunAndTheListAsItWas) {
    std::vector<int> record;
    KyParallelTasks tasks;
    tasks.AddTask(new Note(record, 1));
    tasks.AddTask(new Failing);
    tasks.AddTask(new Note(record, 3));
    const std::vector<KyParallelTask*> before = tasks.m_tasks;

    EXPECT_THROW(tasks.Run(), std::runtime_error);

    EXPECT_THAT(record, ElementsAre(1));
    EXPECT_EQ(tasks.m_tasks, before);
}

TEST(KyParallelTasks, StorageDoublesFromOne) {
    std::vector<int> record;
    KyParallelTasks tasks;
    std::vector<std::size_t> capacities;

    for (int n = 0; n < 5; ++n) {
        tasks.AddTask(new Note(record, n));
        capacities.push_back(tasks.m_tasks.capacity());
    }

    EXPECT_THAT(capacities, ElementsAre(1, 2, 4, 4, 8));
}

TEST(KyParallelTasks, ClearEmptiesTheListAndKeepsItsCapacity) {
    std::vector<int> record;
    KyParallelTasks tasks;
    for (const int n : {1, 2, 3}) {
        tasks.AddTask(new Note(record, n));
    }

    tasks.Clear();

    EXPECT_EQ(tasks.GetLength(), 0);
    EXPECT_EQ(tasks.m_tasks.capacity(), 4u);
}

TEST(KyParallelTasks, AfterClearTasksStartAgainAtIndexZero) {
    std::vector<int> record;
    KyParallelTasks tasks;
    tasks.AddTask(new Note(record, 1));
    tasks.AddTask(new Note(record, 2));
    tasks.Clear();
    auto* const pTask = new Note(record, 3);

    tasks.AddTask(pTask);
    tasks.Run();

    EXPECT_EQ(tasks.GetLength(), 1);
    EXPECT_EQ(tasks[0], pTask);
    EXPECT_THAT(record, ElementsAre(3));
}

TEST(KyParallelTasks, ADerivedListIsDestroyedThroughItsBase) {
    class Counted : public KyParallelTasks {
    public:
        explicit Counted(int& nDestroyed) : m_pDestroyed(&nDestroyed) {}
        ~Counted() override { ++*m_pDestroyed; }

    private:
        int* m_pDestroyed;
    };
    int nDestroyed = 0;
    std::vector<int> record;
    std::unique_ptr<KyParallelTasks> tasks = std::make_unique<Counted>(nDestroyed);
    tasks->AddTask(new Note(record, 1));

    tasks.reset();

    EXPECT_EQ(nDestroyed, 1);
}

// Layout
// --------------------------------------------------------------------------------------------------------------

TEST(KyParallelTask, TheTableHoldsRunThenExecuteAndNoDestructor) {
    class Probe : public KyParallelTask {
    public:
        void Execute() override {}
        virtual ~Probe() = default;
        virtual void Next() {}
    };

    EXPECT_EQ(SlotOf(&KyParallelTask::run), 0);
    EXPECT_EQ(SlotOf(&KyParallelTask::Execute), 1);
    EXPECT_EQ(SlotOf(&Probe::Next), 4) << "behind the destructors, which Probe is the first to make virtual";
    EXPECT_EQ(SlotOf(&KyParallelTask::Start), -1);
    EXPECT_EQ(SlotOf(&KyParallelTask::Wait), -1);
    EXPECT_FALSE(std::has_virtual_destructor_v<KyParallelTask>);
    EXPECT_TRUE(std::is_trivially_destructible_v<Note>) << "the base's own does nothing";
    EXPECT_TRUE(std::is_abstract_v<KyParallelTask>);
    EXPECT_EQ(sizeof(KyParallelTask), sizeof(void*));
}

TEST(KyParallelTasks, TheTableHoldsTheDestructorsAndTheVectorStandsBehindIt) {
    class Probe : public KyParallelTasks {
    public:
        virtual void Next() {}
    };
    const KyParallelTasks tasks;

    EXPECT_TRUE(std::has_virtual_destructor_v<KyParallelTasks>);
    EXPECT_EQ(SlotOf(&Probe::Next), 2);
    EXPECT_EQ(OffsetOf(tasks, tasks.m_tasks), 8);
    EXPECT_EQ(sizeof(KyParallelTasks), sizeof(void*) + sizeof(std::vector<KyParallelTask*>));
    EXPECT_TRUE((std::is_same_v<decltype(tasks.m_tasks), std::vector<KyParallelTask*>>));
}

TEST(KyParallelTasks, OwnsItsTasksAndIsThereforeNeverCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<KyParallelTasks>);
    EXPECT_FALSE(std::is_copy_assignable_v<KyParallelTasks>);
}

}  // namespace
