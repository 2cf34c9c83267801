// A reactor that writes down what it receives, and meddles with the channel when a test tells it to.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "VexaBase/event/KyEventReactor.h"

/// Who received what, in order: "A:saved".
using Calls = std::vector<std::string>;

/// Registers itself only when told to, and unregisters itself when it goes.
class Recorder : public KyEventReactor {
public:
    Recorder(Calls& calls, std::string strName, unsigned int nMask = 0)
        : KyEventReactor(nMask), m_pCalls(&calls), m_strName(std::move(strName)) {}
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder() override { KyUnRegisterReactor(this); }

    /// What the handler does the next time it is called, and only then.
    void Once(std::function<void()> action) { m_once = std::move(action); }

    void React(const wchar_t* pszName, void* pData) override {
        std::string strCall = m_strName + ":";
        for (; *pszName != 0; ++pszName) {
            strCall += static_cast<char>(*pszName);
        }
        m_pCalls->push_back(strCall);
        m_data.push_back(pData);
        if (const auto action = std::exchange(m_once, nullptr)) action();
    }

    std::vector<void*> m_data;  // the data pointers received, in order

private:
    Calls* m_pCalls;
    std::string m_strName;
    std::function<void()> m_once;
};
