// What the checked build stops on.

#include <gmock/gmock.h>

#include "VexaBase/task/KyParallelTask.h"

namespace {

class Idle final : public KyParallelTask {
public:
    void Execute() override {}
};

/// Adds another task to the list that is running it.
class Meddler final : public KyParallelTask {
public:
    explicit Meddler(KyParallelTasks& tasks) : m_pTasks(&tasks) {}
    void Execute() override { m_pTasks->AddTask(new Idle); }

private:
    KyParallelTasks* m_pTasks;
};

TEST(TaskChecksDeathTest, AnIndexOutsideTheListIsStopped) {
    KyParallelTasks tasks;
    tasks.AddTask(new Idle);

    EXPECT_DEATH(tasks[1],
                 "VexaBase/task/KyParallelTask.cpp:[0-9]+: KyParallelTasks::operator\\[\\]: "
                 "index out of range \\(index 1, length 1\\)");
    EXPECT_DEATH(tasks[-1], "index out of range \\(index -1, length 1\\)");
}

TEST(TaskChecksDeathTest, RunningANullTaskIsStopped) {
    KyParallelTasks tasks;
    tasks.AddTask(new Idle);
    tasks.AddTask(nullptr);

    EXPECT_DEATH(tasks.Run(), "KyParallelTasks::Run: null task \\(index 1, length 2\\)");
}

TEST(TaskChecksDeathTest, ATaskThatChangesTheRunningListIsStopped) {
    KyParallelTasks tasks;
    tasks.AddTask(new Meddler(tasks));

    EXPECT_DEATH(tasks.Run(),
                 "KyParallelTasks::Run: the list was changed by its own task "
                 "\\(index 0, length 2, was 1\\)");
}

TEST(TaskChecks, WhatIsDefinedIsNotStopped) {
    KyParallelTasks tasks;
    tasks.Run();
    tasks.AddTask(nullptr);

    tasks.Clear();

    EXPECT_EQ(tasks.GetLength(), 0);
}

}  // namespace
