// Sending to 1, 8 and 64 receivers, and posting with draining, beside Boost.Signals2, sigc++ and a plain
// vector of functions (which has no queue; a deque of calls stands in for one). A case's name is
// job/case/library.
#include <benchmark/benchmark.h>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "VexaBase/event/KyEventReactor.h"

#if defined(VEXABASE_HAS_SIGNALS2)
#include <boost/signals2/signal.hpp>
#endif
#if defined(VEXABASE_HAS_SIGCPP)
#include <sigc++/sigc++.h>
#endif

namespace {

constexpr int nPosted = 100;

class Counter : public KyEventReactor {
public:
    void React(const wchar_t* /*pszName*/, void* pData) override { ++*static_cast<long*>(pData); }
};

class Reactors {
public:
    explicit Reactors(long n) : m_counters(static_cast<std::size_t>(n)) {
        for (Counter& counter : m_counters) {
            KyRegisterReactor(&counter);
        }
    }
    ~Reactors() {
        for (Counter& counter : m_counters) {
            KyUnRegisterReactor(&counter);
        }
    }
    Reactors(const Reactors&) = delete;
    Reactors& operator=(const Reactors&) = delete;

private:
    std::vector<Counter> m_counters;
};

void SendOurs(benchmark::State& state) {
    const Reactors reactors(state.range(0));
    long nCalls = 0;
    for (auto _ : state) {
        KySendEvent(L"changed", &nCalls, 0);
    }
    benchmark::DoNotOptimize(nCalls);
}
BENCHMARK(SendOurs)->Name("event/send/ours")->Arg(1)->Arg(8)->Arg(64);

void PostOurs(benchmark::State& state) {
    const Reactors reactors(1);
    long nCalls = 0;
    for (auto _ : state) {
        for (int i = 0; i < nPosted; ++i) {
            KyPostEvent(L"changed", &nCalls, 0);
        }
        KyProcessPostEvents();
    }
    benchmark::DoNotOptimize(nCalls);
}
BENCHMARK(PostOurs)->Name("event/post 100 and drain/ours");

using Function = std::function<void(const std::wstring&, void*)>;

void Count(const std::wstring& /*name*/, void* pData) { ++*static_cast<long*>(pData); }

/// Sends by an emitter, a callable of name and data.
template <class Emit>
void Send(benchmark::State& state, Emit emit) {
    long nCalls = 0;
    for (auto _ : state) {
        emit(std::wstring(L"changed"), &nCalls);
    }
    benchmark::DoNotOptimize(nCalls);
}

template <class Emit>
void Post(benchmark::State& state, Emit emit) {
    long nCalls = 0;
    std::deque<std::pair<std::wstring, void*>> queue;
    for (auto _ : state) {
        for (int i = 0; i < nPosted; ++i) {
            queue.emplace_back(L"changed", &nCalls);
        }
        for (; !queue.empty(); queue.pop_front()) {
            emit(queue.front().first, queue.front().second);
        }
    }
    benchmark::DoNotOptimize(nCalls);
}

struct FunctionEmitter {
    explicit FunctionEmitter(long n) : functions(static_cast<std::size_t>(n), Count) {}
    void operator()(const std::wstring& name, void* pData) const {
        for (const Function& function : functions) {
            function(name, pData);
        }
    }
    std::vector<Function> functions;
};

template <class Emitter>
void SendBy(benchmark::State& state) {
    Send(state, Emitter(state.range(0)));
}
template <class Emitter>
void PostBy(benchmark::State& state) {
    Post(state, Emitter(1));
}
BENCHMARK(SendBy<FunctionEmitter>)->Name("event/send/std::function")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(PostBy<FunctionEmitter>)->Name("event/post 100 and drain/std::function");

#if defined(VEXABASE_HAS_SIGNALS2)
struct Signals2Emitter {
    explicit Signals2Emitter(long n)
        : pSignal(std::make_unique<boost::signals2::signal<void(const std::wstring&, void*)>>()) {
        for (long i = 0; i < n; ++i) {
            pSignal->connect(Count);
        }
    }
    void operator()(const std::wstring& name, void* pData) const { (*pSignal)(name, pData); }
    std::unique_ptr<boost::signals2::signal<void(const std::wstring&, void*)>> pSignal;
};
BENCHMARK(SendBy<Signals2Emitter>)->Name("event/send/boost::signals2")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(PostBy<Signals2Emitter>)->Name("event/post 100 and drain/boost::signals2");
#endif

#if defined(VEXABASE_HAS_SIGCPP)
struct SigcEmitter {
    explicit SigcEmitter(long n)
        : pSignal(std::make_unique<sigc::signal<void, const std::wstring&, void*>>()) {
        for (long i = 0; i < n; ++i) {
            pSignal->connect(sigc::ptr_fun(Count));
        }
    }
    void operator()(const std::wstring& name, void* pData) const { pSignal->emit(name, pData); }
    std::unique_ptr<sigc::signal<void, const std::wstring&, void*>> pSignal;
};
BENCHMARK(SendBy<SigcEmitter>)->Name("event/send/sigc++")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(PostBy<SigcEmitter>)->Name("event/post 100 and drain/sigc++");
#endif

}  // namespace
