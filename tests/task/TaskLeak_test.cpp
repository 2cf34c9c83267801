// Clear under the sanitizer's own allocator, which knows each block's size and start: a task whose base is
// not the object's first must neither be missed nor be given back by the wrong address or size.

#include <gtest/gtest.h>

#include "VexaBase/task/KyParallelTask.h"

namespace {

class Mixin {
public:
    virtual ~Mixin() = default;
    long m_nPayload = 0;
};

class Small final : public KyParallelTask {
public:
    void Execute() override {}
};

class Large final : public Mixin, public KyParallelTask {
public:
    void Execute() override { ++m_payload[99]; }
    long m_payload[100] = {};
};

TEST(KyParallelTasksStorage, TasksOfEverySizeAndPlaceComeAndGo) {
    KyParallelTasks tasks;
    for (int nRound = 0; nRound < 3; ++nRound) {
        for (int i = 0; i < 10; ++i) {
            tasks.AddTask(new Small);
            tasks.AddTask(new Large);
        }

        tasks.Run();
        EXPECT_EQ(static_cast<Large*>(tasks[1])->m_payload[99], 1);
        tasks.Clear();

        EXPECT_EQ(tasks.GetLength(), 0);
    }
    tasks.AddTask(new Large);  // left to the destructor
}

}  // namespace
