// The event channel: one for the process. Receivers, the reactors, register themselves; a sender names an
// event, adds a data pointer and a mask, and either sends it, so that every matching reactor is called before
// the call returns, or posts it, to be delivered when the application's own loop calls KyProcessPostEvents:
//
//     class Progress : public KyEventReactor {
//     public:
//         void React(const wchar_t* pszName, void* pData) override;
//     };
//
//     Progress progress;
//     KyRegisterReactor(&progress);
//     KySendEvent(L"loaded", &document, 0x1);
//     KyUnRegisterReactor(&progress);
//
// An event with mask e reaches a reactor with mask r when r is 0, or e is 0, or they share a bit. The name
// plays no part in that. Delivery is synchronous, on the caller's thread, in the order of registration;
// posted events go in the order of posting.
//
// Delivery walks the list of reactors with that list's own cursor and reads the cursor again after every
// handler. What a handler does to the channel therefore shows in the walk it is part of, by rule:
//   (1) registering a reactor puts the cursor on the new entry, the last one: the walk ends with this handler
//   (2) unregistering, of any reactor, registered or not, leaves the cursor on none: the walk starts over at
//       the first reactor that is left, and reactors that had the event get it again
//   (3) sending, and draining while events are queued, are walks of their own that leave the cursor on none:
//       the outer walk starts over likewise
//   (4) posting, and draining an empty queue, disturb nothing
// A handler that always unregisters or sends keeps its own walk going for ever. Post rather than send, and
// put off registration until delivery is over, wherever repeats would hurt.
//
// After its handler a reactor is not touched again: it may unregister and delete itself there. A handler's
// exception passes through to whoever sent or drained. It ends that walk, nothing is leaked, and the channel
// goes on working.
#pragma once

#include "VexaBase/KyConfig.h"
#include "VexaBase/string/KyString.h"

/// An event on its way: a record that the channel makes, delivers and destroys.
class KY_API KyEvent {
public:
    /// Copies the name, null being empty, and stores the rest.
    KyEvent(const wchar_t* pszName, void* pData, unsigned int nMask);

    // Events order by name, character code by character code (wcscmp); data and mask play no part.
    /// True when this event's name orders before the other's.
    bool operator<(const KyEvent& other) const;
    /// True when this event's name orders behind the other's.
    bool operator>(const KyEvent& other) const;

    KyString m_strName;    // the name
    void* m_pData;         // the sender's data
    unsigned int m_nMask;  // the kind bits; 0 reaches every reactor
};

/// A receiver.
class KY_API KyEventReactor {
public:
    /// A receiver of every event; it is not registered yet.
    KyEventReactor() : KyEventReactor(0) {}

    /// A receiver of the kinds of event given; it is not registered yet.
    explicit KyEventReactor(unsigned int nMask);

    /// The handler. The name is the channel's own copy and valid during the call; pData is the sender's
    /// pointer.
    virtual void React(const wchar_t* pszName, void* pData) = 0;

    virtual ~KyEventReactor();

    unsigned int m_nMask;  // the kinds of event wanted; 0 wants every event
};

/// Adds a reactor behind the others. Once registered twice it is called twice an event. It stays the
/// caller's, who unregisters it before destroying it. O(1). Requires a reactor.
KY_API void KyRegisterReactor(KyEventReactor* pReactor);

/// Removes every entry of pReactor; the others keep their order. One that is not registered is ignored. The
/// object itself is not touched. O(reactors).
KY_API void KyUnRegisterReactor(KyEventReactor* pReactor);

/// Queues an event for KyProcessPostEvents. The name is copied; the data has to live until the event has been
/// delivered. When memory runs out nothing is queued and nothing leaked. O(length of the name).
KY_API void KyPostEvent(const wchar_t* pszName, void* pData, unsigned int nMask);

/// Delivers an event now; the queue is left alone. O(reactors + length of the name). Allocates nothing unless
/// the name is longer than 23 characters.
KY_API void KySendEvent(const wchar_t* pszName, void* pData, unsigned int nMask);

/// Delivers the queued events, oldest first, until the queue is empty: those that handlers post meanwhile as
/// well, behind the ones that were waiting. An event leaves the queue before it is delivered; when a handler
/// throws, that event is destroyed and the rest stay queued.
KY_API void KyProcessPostEvents();
