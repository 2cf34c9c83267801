// Sending to a number of receivers, and posting a number of events and draining them to one, beside
// Boost.Signals2 and sigc++. These have no queue: a deque of names and pointers stands in for one. They have no
// masks either. The limit is what the rule for posted events costs: a record, a
// copy of the name and a node on the heap for every one. A case's name is job/case/library/number.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "VexaBase/event/KyEventReactor.h"

#if defined(VEXABASE_HAS_SIGNALS2)
#include <boost/signals2/signal.hpp>
#endif
#if defined(VEXABASE_HAS_SIGCPP)
#include <sigc++/sigc++.h>
#endif

namespace {

/// Ends the program unless the receivers were called as often as they had to be.
void ExpectCalls(long nCalls, long nExpected) {
    if (nCalls != nExpected) {
        std::fprintf(stderr, "events: %ld calls, not %ld\n", nCalls, nExpected);
        std::abort();
    }
}

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
    ExpectCalls(nCalls, state.iterations() * state.range(0));
}
BENCHMARK(SendOurs)->Name("events/send/ours")->Arg(1)->Arg(8)->Arg(64);

void PostOurs(benchmark::State& state) {
    const Reactors reactors(1);
    long nCalls = 0;
    for (auto _ : state) {
        for (long i = 0; i < state.range(0); ++i) {
            KyPostEvent(L"changed", &nCalls, 0);
        }
        KyProcessPostEvents();
    }
    ExpectCalls(nCalls, state.iterations() * state.range(0));
}
BENCHMARK(PostOurs)->Name("events/post and drain/ours")->Arg(1)->Arg(100);

/// A queue of records, each with a copy of its name, in nodes of their own.
class BareQueue {
public:
    BareQueue() = default;
    BareQueue(const BareQueue&) = delete;
    BareQueue& operator=(const BareQueue&) = delete;
    ~BareQueue() { Drain(nullptr); }

    void Post(const wchar_t* pszName, void* pData, unsigned int nMask) {
        const std::size_t nSize = std::wcslen(pszName) + 1;
        auto pEvent = std::make_unique<Event>();
        pEvent->m_name = std::make_unique<wchar_t[]>(nSize);
        std::wmemcpy(pEvent->m_name.get(), pszName, nSize);
        pEvent->m_pData = pData;
        pEvent->m_nMask = nMask;
        auto* const pNode = new Node{std::move(pEvent), nullptr, m_pLast};
        (m_pLast != nullptr ? m_pLast->m_pNext : m_pFirst) = pNode;
        m_pLast = pNode;
    }

    void Drain(KyEventReactor* pReactor) {
        while (m_pFirst != nullptr) {
            const std::unique_ptr<Event> pEvent = TakeFirst();
            if (pReactor != nullptr && (pReactor->m_nMask == 0 || pEvent->m_nMask == 0 ||
                                        (pReactor->m_nMask & pEvent->m_nMask) != 0)) {
                pReactor->React(pEvent->m_name.get(), pEvent->m_pData);
            }
        }
    }

private:
    struct Event {
        std::unique_ptr<wchar_t[]> m_name;
        void* m_pData = nullptr;
        unsigned int m_nMask = 0;
    };
    struct Node {
        std::unique_ptr<Event> m_pEvent;
        Node* m_pNext;
        Node* m_pPre;
    };

    std::unique_ptr<Event> TakeFirst() {
        const std::unique_ptr<Node> pNode(m_pFirst);
        m_pFirst = pNode->m_pNext;
        (m_pFirst != nullptr ? m_pFirst->m_pPre : m_pLast) = nullptr;
        return std::move(pNode->m_pEvent);
    }

    Node* m_pFirst = nullptr;
    Node* m_pLast = nullptr;
};

void PostLimit(benchmark::State& state) {
    BareQueue queue;
    Counter counter;
    KyEventReactor* pReactor = &counter;
    const wchar_t* pszName = L"changed";
    benchmark::DoNotOptimize(pReactor);
    benchmark::DoNotOptimize(pszName);
    long nCalls = 0;
    for (auto _ : state) {
        for (long i = 0; i < state.range(0); ++i) {
            queue.Post(pszName, &nCalls, 0);
        }
        queue.Drain(pReactor);
    }
    ExpectCalls(nCalls, state.iterations() * state.range(0));
}
BENCHMARK(PostLimit)->Name("events/post and drain/limit")->Arg(1)->Arg(100);

[[maybe_unused]] void Count(const std::wstring& /*name*/, void* pData) { ++*static_cast<long*>(pData); }

/// Sends by an emitter, a callable of name and data.
template <class Emit>
void Send(benchmark::State& state, Emit emit) {
    long nCalls = 0;
    for (auto _ : state) {
        emit(std::wstring(L"changed"), &nCalls);
    }
    ExpectCalls(nCalls, state.iterations() * state.range(0));
}

template <class Emit>
void Post(benchmark::State& state, Emit emit) {
    long nCalls = 0;
    std::deque<std::pair<std::wstring, void*>> queue;
    for (auto _ : state) {
        for (long i = 0; i < state.range(0); ++i) {
            queue.emplace_back(L"changed", &nCalls);
        }
        for (; !queue.empty(); queue.pop_front()) {
            emit(queue.front().first, queue.front().second);
        }
    }
    ExpectCalls(nCalls, state.iterations() * state.range(0));
}

template <class Emitter>
void SendBy(benchmark::State& state) {
    Send(state, Emitter(state.range(0)));
}
template <class Emitter>
void PostBy(benchmark::State& state) {
    Post(state, Emitter(1));
}

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
BENCHMARK(SendBy<Signals2Emitter>)->Name("events/send/Boost.Signals2")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(PostBy<Signals2Emitter>)->Name("events/post and drain/Boost.Signals2")->Arg(1)->Arg(100);
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
BENCHMARK(SendBy<SigcEmitter>)->Name("events/send/sigc++")->Arg(1)->Arg(8)->Arg(64);
BENCHMARK(PostBy<SigcEmitter>)->Name("events/post and drain/sigc++")->Arg(1)->Arg(100);
#endif

}  // namespace
