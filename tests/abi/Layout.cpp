// Prints where every class keeps its virtual operations and its fields: what a program that was compiled against one
// build of the library relies on when it runs with another. The numbers are the Itanium ABI's.
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/containers/KyXList.h"
#include "VexaBase/event/KyEventReactor.h"
#include "VexaBase/ga/GA_Gene.h"
#include "VexaBase/ga/GA_Individual.h"
#include "VexaBase/ga/GA_Population.h"
#include "VexaBase/graph/KyBitData.h"
#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/graph/KyGraphArc.h"
#include "VexaBase/graph/KyGraphNode.h"
#include "VexaBase/graph/KyGraphPath.h"
#include "VexaBase/rx/KyRxClass.h"
#include "VexaBase/stream/KyDynArrayStream.h"
#include "VexaBase/stream/KyDynArrayStreamEx.h"
#include "VexaBase/stream/KyStream.h"
#include "VexaBase/string/KyString.h"
#include "VexaBase/task/KyParallelTask.h"

namespace {

/// The slot that a call through the pointer goes by: the pointer holds 1 + its offset in the virtual table.
template <class Function>
long SlotOf(Function pFunction) {
    std::ptrdiff_t words[2];
    static_assert(sizeof(pFunction) == sizeof(words));
    std::memcpy(words, &pFunction, sizeof(words));
    return words[0] % 2 != 0 ? words[0] / static_cast<long>(sizeof(void*)) : -1;
}

/// The last slot of a class is before the first that a derived class adds.
template <class Class>
struct OneMore : Class {
    virtual void More() {}
};

template <class Field, class Class>
long OffsetOf(Field Class::*pField) {
    alignas(Class) static char storage[sizeof(Class)];
    auto* const pObject = reinterpret_cast<Class*>(storage);
    return reinterpret_cast<char*>(&(pObject->*pField)) - storage;
}

struct Element {};
struct Comparable {
    int Cmp(const Comparable&) const { return 0; }
};

void Title(const char* pszClass, std::size_t nSize) { std::printf("\n%s: %zu bytes\n", pszClass, nSize); }
void Slot(long nSlot, const char* pszName) { std::printf("  slot %2ld  %s\n", nSlot, pszName); }
void Field(long nOffset, const char* pszName) { std::printf("  byte %2ld  %s\n", nOffset, pszName); }
void Destructors(long nSlot) {
    Slot(nSlot, "destructor, complete");
    Slot(nSlot + 1, "destructor, deleting");
}
template <class Class>
void Slots() {
    std::printf("  %ld slots\n", SlotOf(&OneMore<Class>::More));
}

/// The slots of the container protocol, as the class has them.
template <class Container, class T>
void Protocol() {
    Slot(SlotOf(&Container::ReAllocate), "ReAllocate");
    Destructors(SlotOf(&Container::ReAllocate) + 1);
    Slot(SlotOf(&Container::SetLength), "SetLength");
    Slot(SlotOf(&Container::Reset), "Reset");
    Slot(SlotOf(&Container::GetCurData), "GetCurData");
    Slot(SlotOf(&Container::SetCurData), "SetCurData");
    Slot(SlotOf(&Container::MoveToFirst), "MoveToFirst");
    Slot(SlotOf(&Container::MoveToNext), "MoveToNext");
    Slot(SlotOf(&Container::MoveToPre), "MoveToPre");
    Slot(SlotOf(&Container::MoveToLast), "MoveToLast");
    Slot(SlotOf(&Container::MoveTo), "MoveTo");
    Slot(SlotOf(&Container::operator[]), "operator[]");
    Slot(SlotOf(&Container::GetFirst), "GetFirst");
    Slot(SlotOf(&Container::GetNext), "GetNext");
    Slot(SlotOf(&Container::GetPre), "GetPre");
    Slot(SlotOf(&Container::GetLast), "GetLast");
    Slot(SlotOf(&Container::GetAt), "GetAt");
    Slot(SlotOf(&Container::InsertCur), "InsertCur");
    Slot(SlotOf(&Container::Insert), "Insert");
    Slot(SlotOf(&Container::InsertHead), "InsertHead");
    Slot(SlotOf(static_cast<long (Container::*)(const T&)>(&Container::Append)), "Append");
    Slot(SlotOf(&Container::DelCur), "DelCur");
    Slot(SlotOf(static_cast<void (Container::*)(bool)>(&Container::Sort)), "Sort(bool)");
    Slot(SlotOf(static_cast<void (Container::*)(int (*)(const T&, const T&))>(&Container::Sort)),
         "Sort(compare elements)");
    Slot(SlotOf(&Container::Move), "Move");
}

/// The slots that a list adds to the protocol.
template <class List, class T>
void ListSlots() {
    Slot(SlotOf(&List::InsertAfterCur), "InsertAfterCur");
    Slot(SlotOf(&List::DetachAfterCur), "DetachAfterCur");
    Slot(SlotOf(&List::Conbine), "Conbine");
    Slot(SlotOf(&List::ReverseList), "ReverseList");
    Slot(SlotOf(&List::Rotate), "Rotate");
}

template <class List, class T>
void SortObjectsSlot() {
    Slot(SlotOf(static_cast<void (List::*)(int (*)(const T&, const T&))>(&List::Sort)),
         "Sort(compare objects)");
}

template <class Container>
void ProtocolFields() {
    Field(OffsetOf(&Container::m_nLength), "m_nLength");
    Field(OffsetOf(&Container::m_nCurIndex), "m_nCurIndex");
}

template <class Array>
void ArrayFields() {
    ProtocolFields<Array>();
    Field(OffsetOf(&Array::m_pData), "m_pData");
    Field(OffsetOf(&Array::m_nCapacity), "m_nCapacity");
    Field(OffsetOf(&Array::m_nGrowBy), "m_nGrowBy");
}

template <class List>
void ListFields() {
    ProtocolFields<List>();
    Field(OffsetOf(&List::m_pCurNode), "m_pCurNode");
    Field(OffsetOf(&List::m_pHead), "m_pHead");
    Field(OffsetOf(&List::m_pTail), "m_pTail");
}

template <class List>
void IndexFields() {
    Field(OffsetOf(&List::m_arrIndex), "m_arrIndex");
    Field(OffsetOf(&List::m_nStep), "m_nStep");
}

void Containers() {
    Title("KyDynArrayBase<long>", sizeof(KyDynArrayBase<long>));
    Protocol<KyDynArrayBase<long>, long>();
    ProtocolFields<KyDynArrayBase<long>>();

    Title("KyDynArray<long>", sizeof(KyDynArray<long>));
    Protocol<KyDynArray<long>, long>();
    Slots<KyDynArray<long>>();
    ArrayFields<KyDynArray<long>>();

    using Owning = KyDynPArray<Element>;
    Title("KyDynPArray<Element>", sizeof(Owning));
    Protocol<Owning, Element*>();
    Slot(SlotOf(&Owning::ReleaseCur), "ReleaseCur");
    Slot(SlotOf(&Owning::TakeOffCur), "TakeOffCur");
    SortObjectsSlot<Owning, Element>();
    Slots<Owning>();
    ArrayFields<Owning>();

    Title("KyArray<long>", sizeof(KyArray<long>));
    Destructors(0);
    Slots<KyArray<long>>();
    Field(OffsetOf(&KyArray<long>::m_pData), "m_pData");
    Field(OffsetOf(&KyArray<long>::m_nLength), "m_nLength");

    Title("KyListNode<long>", sizeof(KyListNode<long>));
    Field(OffsetOf(&KyListNode<long>::m_data), "m_data");
    Field(OffsetOf(&KyListNode<long>::m_pNext), "m_pNext");

    Title("KyDListNode<long>", sizeof(KyDListNode<long>));
    Field(OffsetOf(&KyDListNode<long>::m_data), "m_data");
    Field(OffsetOf(&KyDListNode<long>::m_pNext), "m_pNext");
    Field(OffsetOf(&KyDListNode<long>::m_pPre), "m_pPre");

    Title("KyList<long>", sizeof(KyList<long>));
    Protocol<KyList<long>, long>();
    ListSlots<KyList<long>, long>();
    Slots<KyList<long>>();
    ListFields<KyList<long>>();

    Title("KyDList<long>", sizeof(KyDList<long>));
    Protocol<KyDList<long>, long>();
    ListSlots<KyDList<long>, long>();
    Slots<KyDList<long>>();
    ListFields<KyDList<long>>();

    Title("KyPDList<Element>", sizeof(KyPDList<Element>));
    Protocol<KyPDList<Element>, Element*>();
    ListSlots<KyPDList<Element>, Element*>();
    SortObjectsSlot<KyPDList<Element>, Element>();
    Slots<KyPDList<Element>>();
    ListFields<KyPDList<Element>>();

    Title("KyXList<long>", sizeof(KyXList<long>));
    Protocol<KyXList<long>, long>();
    ListSlots<KyXList<long>, long>();
    Slots<KyXList<long>>();
    ListFields<KyXList<long>>();
    IndexFields<KyXList<long>>();

    using Searched = KyPXList<Comparable>;
    Title("KyPXList<Comparable>", sizeof(Searched));
    Protocol<Searched, Comparable*>();
    ListSlots<Searched, Comparable*>();
    SortObjectsSlot<Searched, Comparable>();
    Slots<Searched>();
    ListFields<Searched>();
    IndexFields<Searched>();
}

template <class Queue>
void QueueLayout(const char* pszClass) {
    Title(pszClass, sizeof(Queue));
    Slot(SlotOf(&Queue::Reset), "Reset");
    Slot(SlotOf(&Queue::GetLength), "GetLength");
    Slot(SlotOf(&Queue::operator[]), "operator[]");
    Slot(SlotOf(&Queue::GetHeadData), "GetHeadData");
    Slot(SlotOf(&Queue::GetTailData), "GetTailData");
    Slot(SlotOf(&Queue::EnQuene), "EnQuene");
    Slot(SlotOf(&Queue::DeQuene), "DeQuene");
    Destructors(SlotOf(&Queue::DeQuene) + 1);
    Field(OffsetOf(&Queue::m_nMaxLength), "m_nMaxLength");
}

void Queues() {
    QueueLayout<KyQuene<long>>("KyQuene<long>");
    QueueLayout<KyListQuene<long>>("KyListQuene<long>");
    Field(OffsetOf(&KyListQuene<long>::m_list), "m_list");
    Slots<KyListQuene<long>>();
    QueueLayout<KyPDListQuene<Element>>("KyPDListQuene<Element>");
    Field(OffsetOf(&KyPDListQuene<Element>::m_list), "m_list");
    Slots<KyPDListQuene<Element>>();
}

void Strings() {
    Title("KyString", sizeof(KyString));
    Destructors(0);
    Slots<KyString>();
    Field(OffsetOf(&KyString::m_pData), "m_pData");
    Field(OffsetOf(&KyString::m_nLength), "m_nLength");
    Field(OffsetOf(&KyString::m_nStrLength), "m_nStrLength");
}

template <class Stream>
void StreamLayout(const char* pszClass) {
    Title(pszClass, sizeof(Stream));
    Slot(SlotOf(&Stream::MoveTo), "MoveTo");
    Slot(SlotOf(&Stream::Reset), "Reset");
    Slot(SlotOf(&Stream::Write), "Write");
    Slot(SlotOf(&Stream::Read), "Read");
    Slot(SlotOf(&Stream::WriteChar), "WriteChar");
    Slot(SlotOf(&Stream::WriteBool), "WriteBool");
    Slot(SlotOf(&Stream::WriteShort), "WriteShort");
    Slot(SlotOf(&Stream::WriteLong), "WriteLong");
    Slot(SlotOf(&Stream::WriteDouble), "WriteDouble");
    Slot(SlotOf(&Stream::ReadChar), "ReadChar");
    Slot(SlotOf(&Stream::ReadBool), "ReadBool");
    Slot(SlotOf(&Stream::ReadShort), "ReadShort");
    Slot(SlotOf(&Stream::ReadLong), "ReadLong");
    Slot(SlotOf(&Stream::ReadDouble), "ReadDouble");
    Destructors(SlotOf(&Stream::ReadDouble) + 1);
    Slots<Stream>();
    Field(OffsetOf(&Stream::m_nPos), "m_nPos");
    Field(OffsetOf(&Stream::m_nLength), "m_nLength");
}

void Streams() {
    StreamLayout<KyStream>("KyStream");
    StreamLayout<KyDynArrayStream>("KyDynArrayStream");
    Field(OffsetOf(&KyDynArrayStream::m_bytes), "m_bytes");
    StreamLayout<KyDynArrayStreamEx>("KyDynArrayStreamEx");
    Field(OffsetOf(&KyDynArrayStreamEx::m_nChunkSize), "m_nChunkSize");
    Field(OffsetOf(&KyDynArrayStreamEx::m_chunks), "m_chunks");
}

void Classes() {
    Title("KyRxClassInfo", sizeof(KyRxClassInfo));
    Slots<KyRxClassInfo>();
    Field(OffsetOf(&KyRxClassInfo::m_nNumber), "m_nNumber");
    Field(OffsetOf(&KyRxClassInfo::m_pszName), "m_pszName");
    Field(OffsetOf(&KyRxClassInfo::m_pBases), "m_pBases");
    Field(OffsetOf(&KyRxClassInfo::m_pfnCreate), "m_pfnCreate");

    Title("KyRxRunTimeClass", sizeof(KyRxRunTimeClass));
    Slot(SlotOf(&KyRxRunTimeClass::GetCI), "GetCI");
    Destructors(SlotOf(&KyRxRunTimeClass::GetCI) + 1);
    Slots<KyRxRunTimeClass>();

    Title("KyRxDynCreateClass", sizeof(KyRxDynCreateClass));
    Slot(SlotOf(&KyRxDynCreateClass::GetCI), "GetCI");
    Destructors(SlotOf(&KyRxDynCreateClass::GetCI) + 1);
    Slot(SlotOf(&KyRxDynCreateClass::InitObject), "InitObject");
    Slots<KyRxDynCreateClass>();
}

void EventsAndTasks() {
    Title("KyEvent", sizeof(KyEvent));
    Field(OffsetOf(&KyEvent::m_strName), "m_strName");
    Field(OffsetOf(&KyEvent::m_pData), "m_pData");
    Field(OffsetOf(&KyEvent::m_nMask), "m_nMask");

    Title("KyEventReactor", sizeof(KyEventReactor));
    Slot(SlotOf(&KyEventReactor::React), "React");
    Destructors(SlotOf(&KyEventReactor::React) + 1);
    Slots<KyEventReactor>();
    Field(OffsetOf(&KyEventReactor::m_nMask), "m_nMask");

    Title("KyParallelTask", sizeof(KyParallelTask));
    Slot(SlotOf(&KyParallelTask::run), "run");
    Slot(SlotOf(&KyParallelTask::Execute), "Execute");

    Title("KyParallelTasks", sizeof(KyParallelTasks));
    Slots<KyParallelTasks>();
    Field(OffsetOf(&KyParallelTasks::m_tasks), "m_tasks");
}

void GeneticAlgorithm() {
    Title("GA_Gene", sizeof(GA_Gene));
    Slot(SlotOf(&GA_Gene::Clone), "Clone");
    Destructors(SlotOf(&GA_Gene::Clone) + 1);
    Slots<GA_Gene>();

    Title("GA_Individual", sizeof(GA_Individual));
    Protocol<GA_Individual, GA_Gene*>();
    Slot(SlotOf(&GA_Individual::ReleaseCur), "ReleaseCur");
    Slot(SlotOf(&GA_Individual::TakeOffCur), "TakeOffCur");
    SortObjectsSlot<GA_Individual, GA_Gene>();
    Slot(SlotOf(&GA_Individual::New), "New");
    Slot(SlotOf(&GA_Individual::Initialize), "Initialize");
    Slot(SlotOf(&GA_Individual::Mutation), "Mutation");
    Slot(SlotOf(&GA_Individual::Multiply), "Multiply");
    Slot(SlotOf(&GA_Individual::operator<), "operator<");
    Slot(SlotOf(&GA_Individual::operator>), "operator>");
    Slots<GA_Individual>();
    ArrayFields<GA_Individual>();

    using List = KyPDList<GA_Individual>;
    Title("GA_Population", sizeof(GA_Population));
    Protocol<List, GA_Individual*>();
    ListSlots<GA_Population, GA_Individual*>();
    SortObjectsSlot<List, GA_Individual>();
    Slot(SlotOf(&GA_Population::IsContinue), "IsContinue");
    Slot(SlotOf(&GA_Population::Step), "Step");
    Slot(SlotOf(&GA_Population::Evolve), "Evolve");
    Slots<GA_Population>();
    ListFields<GA_Population>();
    Field(OffsetOf(&GA_Population::m_nPopSize), "m_nPopSize");
    Field(OffsetOf(&GA_Population::m_nMutationRate), "m_nMutationRate");
    Field(OffsetOf(&GA_Population::m_nGeneration), "m_nGeneration");
}

void Graphs() {
    Title("KyBitData", sizeof(KyBitData));
    Destructors(0);
    Slots<KyBitData>();
    Field(OffsetOf(&KyBitData::m_nBits), "m_nBits");

    Title("KyGraphArc", sizeof(KyGraphArc));
    Destructors(0);
    Slot(SlotOf(&KyGraphArc::CmpArc), "CmpArc");
    Slots<KyGraphArc>();
    Field(OffsetOf(&KyGraphArc::m_nBits), "m_nBits");
    Field(OffsetOf(&KyGraphArc::m_pStart), "m_pStart");
    Field(OffsetOf(&KyGraphArc::m_pEnd), "m_pEnd");

    Title("KyGraphNode", sizeof(KyGraphNode));
    Destructors(0);
    Slot(SlotOf(&KyGraphNode::CmpNode), "CmpNode");
    Slots<KyGraphNode>();
    Field(OffsetOf(&KyGraphNode::m_nBits), "m_nBits");
    Field(OffsetOf(&KyGraphNode::m_lstArc), "m_lstArc");

    Title("KyGraph", sizeof(KyGraph));
    Field(OffsetOf(&KyGraph::m_nUserData), "m_nUserData");
    Field(OffsetOf(&KyGraph::m_lstNode), "m_lstNode");
    Field(OffsetOf(&KyGraph::m_lstArc), "m_lstArc");

    Title("KyGraphPath", sizeof(KyGraphPath));
    Protocol<KyGraphPath, KyGraphArc*>();
    ListSlots<KyGraphPath, KyGraphArc*>();
    Slots<KyGraphPath>();
    ListFields<KyGraphPath>();
    Field(OffsetOf(&KyGraphPath::m_pBeginNode), "m_pBeginNode");
}

}  // namespace

int main() {
    std::puts("Virtual slots, counted from 0, and fields, in bytes from the object's first.");
    Containers();
    Queues();
    Strings();
    Streams();
    Classes();
    EventsAndTasks();
    GeneticAlgorithm();
    Graphs();
}
