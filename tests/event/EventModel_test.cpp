// Random meddling against a literal model of the cursor. Reactors carry scripts: at its n-th call a reactor
// performs the n-th entry, any mixture of registering, unregistering, sending, posting, draining and
// throwing, which nests as deep as the scripts go. Channel and model perform the same scripts; every call,
// and every field of the channel during it and after each outer operation, has to agree.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "Inside.h"

namespace {

constexpr int nReactors = 5;
constexpr int nNames = 3;
const wchar_t* const szNames[nNames] = {L"one", L"two", L"three"};
char szData[nNames];

enum class Verb { Register, Unregister, Send, Post, Drain, Throw };

struct Step {
    Step(Verb verb, int nReactor, int nName, unsigned int nMask, bool bSwallow)
        : m_verb(verb), m_nReactor(nReactor), m_nName(nName), m_nMask(nMask), m_bSwallow(bSwallow) {}

    Verb m_verb;
    int m_nReactor;        // to register or unregister
    int m_nName;           // of the event to send or post
    unsigned int m_nMask;  // of that event
    bool m_bSwallow;       // whether the one who performs the step survives its failure
};

std::ostream& operator<<(std::ostream& os, const Step& step) {
    static const char* const szVerbs[] = {"Register", "Unregister", "Send", "Post", "Drain", "Throw"};
    return os << szVerbs[static_cast<int>(step.m_verb)] << "(reactor " << step.m_nReactor << ", name "
              << step.m_nName << ", mask " << step.m_nMask << (step.m_bSwallow ? ", swallowing" : "") << ')';
}

using Steps = std::vector<Step>;

struct Scenario {
    std::vector<unsigned int> m_masks;          // of the reactors
    std::vector<std::vector<Steps>> m_scripts;  // what each reactor does at its first, second ... call
    Steps m_outer;                              // what happens outside any handler
};

std::ostream& operator<<(std::ostream& os, const Scenario& scenario) {
    for (std::size_t i = 0; i < scenario.m_masks.size(); ++i) {
        os << "reactor " << i << ", mask " << scenario.m_masks[i] << '\n';
        for (const Steps& steps : scenario.m_scripts[i]) {
            os << "  at a call:";
            for (const Step& step : steps) os << ' ' << step;
            os << '\n';
        }
    }
    for (const Step& step : scenario.m_outer) os << step << '\n';
    return os;
}

struct Failure {};

/// An event as the model queues it; also what is compared of a queued event.
struct Event {
    int m_nName;
    unsigned int m_nMask;

    friend bool operator==(const Event& a, const Event& b) {
        return a.m_nName == b.m_nName && a.m_nMask == b.m_nMask;
    }
    friend std::ostream& operator<<(std::ostream& os, const Event& event) {
        return os << szNames[event.m_nName][0] << '/' << event.m_nMask;
    }
};

/// Everything that can be told about the channel.
struct State {
    std::vector<int> m_reactors;
    long m_nCurIndex;
    std::vector<Event> m_queue;

    friend bool operator==(const State& a, const State& b) {
        return a.m_reactors == b.m_reactors && a.m_nCurIndex == b.m_nCurIndex && a.m_queue == b.m_queue;
    }
    friend std::ostream& operator<<(std::ostream& os, const State& state) {
        os << "reactors";
        for (const int n : state.m_reactors) os << ' ' << n;
        os << ", cursor " << state.m_nCurIndex << ", queue";
        for (const Event& event : state.m_queue) os << ' ' << event;
        return os;
    }
};

/// One handler call, or (reactor -1) the end of an outer operation.
struct Moment {
    int m_nReactor;
    int m_nName;
    bool m_bFailed;
    State m_state;

    friend bool operator==(const Moment& a, const Moment& b) {
        return a.m_nReactor == b.m_nReactor && a.m_nName == b.m_nName && a.m_bFailed == b.m_bFailed &&
               a.m_state == b.m_state;
    }
    friend std::ostream& operator<<(std::ostream& os, const Moment& moment) {
        return os << "\n  reactor " << moment.m_nReactor << " name " << moment.m_nName
                  << (moment.m_bFailed ? " failed: " : ": ") << moment.m_state;
    }
};

/// Performs a scenario on a channel of one kind or the other and writes down every moment.
class Stage {
public:
    explicit Stage(const Scenario& scenario) : m_scenario(scenario), m_nCalls(nReactors, 0) {}
    virtual ~Stage() = default;

    std::vector<Moment> Perform() {
        for (const Step& step : m_scenario.m_outer) {
            bool bFailed = false;
            try {
                Do(step);
            } catch (const Failure&) {
                bFailed = true;
            }
            m_moments.push_back({-1, -1, bFailed, Look()});
        }
        return std::move(m_moments);
    }

protected:
    void Handle(int nReactor, int nName) {
        m_moments.push_back({nReactor, nName, false, Look()});
        const auto& script = m_scenario.m_scripts[static_cast<std::size_t>(nReactor)];
        const std::size_t nCall = m_nCalls[static_cast<std::size_t>(nReactor)]++;
        if (nCall >= script.size()) return;

        for (const Step& step : script[nCall]) {
            try {
                Do(step);
            } catch (const Failure&) {
                if (!step.m_bSwallow) throw;
            }
        }
    }

    unsigned int MaskOf(int nReactor) const { return m_scenario.m_masks[static_cast<std::size_t>(nReactor)]; }

    virtual State Look() const = 0;
    virtual void Register(int nReactor) = 0;
    virtual void Unregister(int nReactor) = 0;
    virtual void Send(const Event& event) = 0;
    virtual void Post(const Event& event) = 0;
    virtual void Drain() = 0;

private:
    void Do(const Step& step) {
        const Event event{step.m_nName, step.m_nMask};
        switch (step.m_verb) {
            case Verb::Register:
                return Register(step.m_nReactor);
            case Verb::Unregister:
                return Unregister(step.m_nReactor);
            case Verb::Send:
                return Send(event);
            case Verb::Post:
                return Post(event);
            case Verb::Drain:
                return Drain();
            case Verb::Throw:
                throw Failure();
        }
    }

    const Scenario& m_scenario;
    std::vector<std::size_t> m_nCalls;
    std::vector<Moment> m_moments;
};

/// The rules, word by word, on a vector and an index.
class ModelStage : public Stage {
public:
    using Stage::Stage;

private:
    State Look() const override { return {m_reactors, m_nCursor, {m_queue.begin(), m_queue.end()}}; }

    void Register(int nReactor) override {
        m_reactors.push_back(nReactor);
        m_nCursor = Length() - 1;
    }

    void Unregister(int nReactor) override {
        MoveToFirst();
        while (m_nCursor >= 0 && m_nCursor < Length()) {
            if (m_reactors[static_cast<std::size_t>(m_nCursor)] == nReactor) {
                m_reactors.erase(m_reactors.begin() + m_nCursor);
                --m_nCursor;
            }
            MoveToNext();
        }
    }

    void Send(const Event& event) override {
        MoveToFirst();
        while (m_nCursor >= 0 && m_nCursor < Length()) {
            const int nReactor = m_reactors[static_cast<std::size_t>(m_nCursor)];
            const unsigned int nMask = MaskOf(nReactor);
            if (!(nMask != 0 && event.m_nMask != 0 && (nMask & event.m_nMask) == 0))
                Handle(nReactor, event.m_nName);
            MoveToNext();
        }
    }

    void Post(const Event& event) override { m_queue.push_back(event); }

    void Drain() override {
        while (!m_queue.empty()) {
            const Event event = m_queue.front();
            m_queue.pop_front();
            Send(event);
        }
    }

    long Length() const { return static_cast<long>(m_reactors.size()); }
    void MoveToFirst() { m_nCursor = Length() != 0 ? 0 : -1; }
    void MoveToNext() {
        ++m_nCursor;
        if (m_nCursor == Length()) m_nCursor = -1;
    }

    std::vector<int> m_reactors;
    long m_nCursor = -1;
    std::deque<Event> m_queue;
};

class ChannelStage : public Stage {
public:
    explicit ChannelStage(const Scenario& scenario) : Stage(scenario) {
        g_lstReactor.Reset();
        g_queneEvent.Reset();
        for (int i = 0; i < nReactors; ++i) {
            m_actors.push_back(std::make_unique<Actor>(*this, i, MaskOf(i)));
        }
    }
    ~ChannelStage() override {
        g_lstReactor.Reset();
        g_queneEvent.Reset();
    }

private:
    class Actor : public KyEventReactor {
    public:
        Actor(ChannelStage& stage, int nReactor, unsigned int nMask)
            : KyEventReactor(nMask), m_nReactor(nReactor), m_pStage(&stage) {}
        void React(const wchar_t* pszName, void* pData) override {
            const int nName = static_cast<int>(static_cast<char*>(pData) - szData);
            m_pStage->Handle(m_nReactor, pszName == std::wstring(szNames[nName]) ? nName : -1);
        }
        const int m_nReactor;

    private:
        ChannelStage* m_pStage;
    };

    State Look() const override {
        State state{{}, g_lstReactor.m_nCurIndex, {}};
        for (const KyEventReactor* pReactor : g_lstReactor) {
            state.m_reactors.push_back(static_cast<const Actor*>(pReactor)->m_nReactor);
        }
        for (const KyEvent* pEvent : g_queneEvent) {
            state.m_queue.push_back(
                {static_cast<int>(static_cast<char*>(pEvent->m_pData) - szData), pEvent->m_nMask});
        }
        // The cursor's node is the one that its index names, and the length is right.
        const KyListNode<KyEventReactor*>* pNode = g_lstReactor.m_pHead;
        for (long i = -1; i < g_lstReactor.m_nCurIndex; ++i) {
            pNode = pNode->m_pNext;
        }
        RC_ASSERT(pNode == g_lstReactor.m_pCurNode);
        RC_ASSERT(g_lstReactor.m_nLength == static_cast<long>(state.m_reactors.size()));
        RC_ASSERT(g_queneEvent.GetLength() == static_cast<long>(state.m_queue.size()));
        RC_ASSERT(g_queneEvent.m_nMaxLength == -1);
        return state;
    }

    void Register(int nReactor) override { KyRegisterReactor(Of(nReactor)); }
    void Unregister(int nReactor) override { KyUnRegisterReactor(Of(nReactor)); }
    void Send(const Event& event) override {
        KySendEvent(szNames[event.m_nName], &szData[event.m_nName], event.m_nMask);
    }
    void Post(const Event& event) override {
        KyPostEvent(szNames[event.m_nName], &szData[event.m_nName], event.m_nMask);
    }
    void Drain() override { KyProcessPostEvents(); }

    KyEventReactor* Of(int nReactor) { return m_actors[static_cast<std::size_t>(nReactor)].get(); }

    std::vector<std::unique_ptr<Actor>> m_actors;
};

rc::Gen<unsigned int> AnyMask() { return rc::gen::element(0u, 1u, 2u, 3u, 4u); }

rc::Gen<Steps> AnySteps(std::size_t nMost) {
    const auto verb = rc::gen::weightedElement<Verb>({{4, Verb::Register},
                                                      {3, Verb::Unregister},
                                                      {4, Verb::Send},
                                                      {4, Verb::Post},
                                                      {3, Verb::Drain},
                                                      {1, Verb::Throw}});
    const auto step =
        rc::gen::construct<Step>(verb, rc::gen::inRange(0, nReactors), rc::gen::inRange(0, nNames), AnyMask(),
                                 rc::gen::arbitrary<bool>());
    return rc::gen::mapcat(rc::gen::inRange<std::size_t>(0, nMost + 1),
                           [step](std::size_t n) { return rc::gen::container<Steps>(n, step); });
}

rc::Gen<Scenario> AnyScenario() {
    // The sizes do not start small as a property's usually do: short scenarios meet themselves rarely.
    return rc::gen::resize(
        rc::kNominalSize, rc::gen::exec([] {
            Scenario scenario;
            scenario.m_masks = *rc::gen::container<std::vector<unsigned int>>(nReactors, AnyMask());
            for (int i = 0; i < nReactors; ++i) {
                const auto nCalls = *rc::gen::inRange<std::size_t>(0, 7);
                scenario.m_scripts.push_back(*rc::gen::container<std::vector<Steps>>(nCalls, AnySteps(2)));
            }
            scenario.m_outer = *AnySteps(60);
            return scenario;
        }));
}

RC_GTEST_PROP(KyEventChannelModel, AnyMeddlingFollowsTheCursor, ()) {
    const Scenario scenario = *AnyScenario();

    const std::vector<Moment> expected = ModelStage(scenario).Perform();
    const std::vector<Moment> actual = ChannelStage(scenario).Perform();

    RC_CLASSIFY(expected.size() > 100, "more than 100 moments");
    RC_ASSERT(actual == expected);
}

}  // namespace
