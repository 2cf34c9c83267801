// Tasks: run one after another on the caller's thread, in the order in which
// they were added.

#include <VexaBase/task/KyParallelTask.h>
#include <VexaBase/task/KyPlatform.h>

#include <iostream>

namespace {

/// Final, because a task has no virtual destructor; and it owns nothing,
/// because its own never runs.
class Step final : public KyParallelTask {
public:
    Step(const char* pszWhat, long& nDone)
        : m_pszWhat(pszWhat), m_nDone(nDone) {}
    void Execute() override {
        std::cout << ++m_nDone << ". " << m_pszWhat << '\n';
    }

private:
    const char* m_pszWhat;
    long& m_nDone;
};

}  // namespace

int main() {
    long nDone = 0;
    KyParallelTasks tasks;
    for (const char* what : {"read", "trace", "draw"})
        tasks.AddTask(new Step(what, nDone));  // the list owns them

    tasks.Run();
    std::cout << nDone << " of " << tasks.GetLength() << " done\n";

    Step once("tidy up", nDone);
    const bool bStarted = once.Start();  // has finished when it returns
    once.Wait();                         // so there is nothing to wait for
    std::cout << std::boolalpha << bStarted << ", 64 bits: " << IsOS64()
              << '\n';
}
