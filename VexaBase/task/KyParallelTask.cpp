#include "VexaBase/task/KyParallelTask.h"

#include <new>

void KyParallelTask::run() { Execute(); }

bool KyParallelTask::Start() {
    Execute();
    return true;
}

void KyParallelTask::Wait() {}

KyParallelTasks::KyParallelTasks() = default;

KyParallelTasks::~KyParallelTasks() { Clear(); }

void KyParallelTasks::AddTask(KyParallelTask* pTask) { m_tasks.push_back(pTask); }

long KyParallelTasks::GetLength() const { return static_cast<long>(m_tasks.size()); }

KyParallelTask* KyParallelTasks::operator[](int i) const {
    KY_CHECK(i >= 0 && i < GetLength(), "KyParallelTasks::operator[]",
             "index out of range (index %d, length %ld)", i, GetLength());
    return m_tasks[static_cast<std::size_t>(i)];
}

void KyParallelTasks::Run() {
    [[maybe_unused]] const std::size_t nTasks = m_tasks.size();
    // NOLINTNEXTLINE(modernize-loop-convert): the end is read afresh after every task
    for (std::size_t i = 0; i < m_tasks.size(); ++i) {
        KY_CHECK(m_tasks[i] != nullptr, "KyParallelTasks::Run", "null task (index %zu, length %zu)", i,
                 nTasks);
        m_tasks[i]->Execute();
        KY_CHECK(m_tasks.size() == nTasks, "KyParallelTasks::Run",
                 "the list was changed by its own task (index %zu, length %zu, was %zu)", i, m_tasks.size(),
                 nTasks);
    }
}

void KyParallelTasks::Clear() {
    for (KyParallelTask* pTask : m_tasks) {
        // The size is unknown here, and the address is the whole object's only for a task that is its first
        // base.
        ::operator delete(dynamic_cast<void*>(pTask));
    }
    m_tasks.clear();
}
