// Tasks, and a list that runs them.
//
// The names promise more than there is, deliberately: every task runs on the caller's thread, one after the
// other in the order in which they were added, and is finished when the call that started it returns. Callers
// rely on that order.
//
//     class Import final : public KyParallelTask {
//         void Execute() override;
//     };
//
//     KyParallelTasks tasks;
//     tasks.AddTask(new Import);
//     tasks.Run();
//
// KyParallelTask has no virtual destructor, and the list runs no destructor: it gives back the storage of a
// task and nothing else. A task must not own what its destructor would release. Derive `final`, as above, or
// give the derived class a virtual destructor of its own; other classes draw a warning where
// -Wnon-virtual-dtor is on.
#pragma once

#include <vector>

#include "VexaBase/KyConfig.h"

/// A unit of work.
class KY_API KyParallelTask {
public:
    /// Calls Execute. Nothing in the library calls run itself: an override of it is for the application.
    virtual void run();

    /// The work.
    virtual void Execute() = 0;

    /// Calls Execute and, when it has finished, returns true.
    bool Start();

    /// Returns at once: what Start started is done.
    void Wait();

protected:
    // Not virtual, and therefore not for deleting through this class.
    ~KyParallelTask() = default;
};

/// The tasks of a run, which belong to the list.
class KY_API KyParallelTasks {
public:
    KyParallelTasks();
    KyParallelTasks(const KyParallelTasks&) = delete;
    KyParallelTasks& operator=(const KyParallelTasks&) = delete;

    /// Clears the list.
    virtual ~KyParallelTasks();

    /// Appends a task that was made with the global new, and takes it over. When memory runs out, the list is
    /// as it was and the task still the caller's. Amortised O(1).
    void AddTask(KyParallelTask* pTask);

    /// Number of tasks.
    long GetLength() const;

    /// Task i, counted from 0 in the order of adding. Requires an index inside the list.
    KyParallelTask* operator[](int i) const;

    /// Calls Execute on every task in order, each to its end before the next. The tasks stay in the list. An
    /// exception of a task passes through; the tasks behind it are not run. Requires tasks that are not null
    /// and leave the list alone.
    void Run();

    /// Empties the list and gives back each task's storage, that of the whole object wherever the task base
    /// sits in it, through the unsized global operator delete. No destructor runs, deliberately. A null task
    /// is skipped. O(tasks).
    void Clear();

    std::vector<KyParallelTask*> m_tasks;  // in the order of adding
};
