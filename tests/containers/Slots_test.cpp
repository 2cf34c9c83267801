// The binary face of the containers: the order of their virtual slots, and the offsets of their fields.
//
// A client that was compiled against one build of the library calls by slot number and reads by offset. Both
// tables are the Itanium ABI's: a pointer to a virtual member function holds 1 + 8 * slot, a virtual
// destructor takes two slots, and the table pointer is the object's first word.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <ostream>
#include <type_traits>
#include <vector>

#include "VexaBase/containers/KyArray.h"
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/containers/KyDynArrayBase.h"
#include "VexaBase/containers/KyDynPArray.h"
#include "VexaBase/containers/KyList.h"
#include "VexaBase/containers/KyPDList.h"
#include "VexaBase/containers/KyQuene.h"
#include "VexaBase/containers/KyXList.h"

namespace {

using testing::ElementsAreArray;

constexpr long nNotVirtual = -1;

/// The slot, counted from 0, that a call through the pointer goes by.
template <class Function>
long SlotOf(Function pMember) {
    std::ptrdiff_t words[2];
    static_assert(sizeof(pMember) == sizeof(words));
    std::memcpy(words, &pMember, sizeof(words));
    return words[0] % 2 != 0 ? static_cast<long>((words[0] - 1) / 8) : nNotVirtual;
}

/// Number of slots of a class: the slot of the next virtual function that a derived class adds.
template <class Class>
struct WithOneMore : Class {
    virtual void OneMore() {}
};
template <class Class>
long SlotsOf() {
    return SlotOf(&WithOneMore<Class>::OneMore);
}

struct Row {
    const char* m_pszName;
    long m_nNumber;

    friend bool operator==(const Row& a, const Row& b) {
        return std::strcmp(a.m_pszName, b.m_pszName) == 0 && a.m_nNumber == b.m_nNumber;
    }
    friend std::ostream& operator<<(std::ostream& os, const Row& row) {
        return os << row.m_pszName << " " << row.m_nNumber;
    }
};
using Table = std::vector<Row>;

Table Joined(Table table, const Table& more) {
    table.insert(table.end(), more.begin(), more.end());
    return table;
}

// The slots that every container has. Slots 1 and 2 are the destructor's.
const Table g_protocol = {{"ReAllocate", 0},  {"SetLength", 3},   {"Reset", 4},          {"GetCurData", 5},
                          {"SetCurData", 6},  {"MoveToFirst", 7}, {"MoveToNext", 8},     {"MoveToPre", 9},
                          {"MoveToLast", 10}, {"MoveTo", 11},     {"operator[]", 12},    {"GetFirst", 13},
                          {"GetNext", 14},    {"GetPre", 15},     {"GetLast", 16},       {"GetAt", 17},
                          {"InsertCur", 18},  {"Insert", 19},     {"InsertHead", 20},    {"Append", 21},
                          {"DelCur", 22},     {"Sort(bool)", 23}, {"Sort(compare)", 24}, {"Move", 25}};

// The protocol's slots as a class of T elements declares or inherits them.
template <class Class, class T>
Table ProtocolSlots() {
    return {
        {"ReAllocate", SlotOf(&Class::ReAllocate)},
        {"SetLength", SlotOf(&Class::SetLength)},
        {"Reset", SlotOf(&Class::Reset)},
        {"GetCurData", SlotOf(&Class::GetCurData)},
        {"SetCurData", SlotOf(&Class::SetCurData)},
        {"MoveToFirst", SlotOf(&Class::MoveToFirst)},
        {"MoveToNext", SlotOf(&Class::MoveToNext)},
        {"MoveToPre", SlotOf(&Class::MoveToPre)},
        {"MoveToLast", SlotOf(&Class::MoveToLast)},
        {"MoveTo", SlotOf(&Class::MoveTo)},
        {"operator[]", SlotOf(&Class::operator[])},
        {"GetFirst", SlotOf(&Class::GetFirst)},
        {"GetNext", SlotOf(&Class::GetNext)},
        {"GetPre", SlotOf(&Class::GetPre)},
        {"GetLast", SlotOf(&Class::GetLast)},
        {"GetAt", SlotOf(&Class::GetAt)},
        {"InsertCur", SlotOf(&Class::InsertCur)},
        {"Insert", SlotOf(&Class::Insert)},
        {"InsertHead", SlotOf(&Class::InsertHead)},
        {"Append", SlotOf(&Class::Append)},
        {"DelCur", SlotOf(&Class::DelCur)},
        {"Sort(bool)", SlotOf(static_cast<void (Class::*)(bool)>(&Class::Sort))},
        {"Sort(compare)", SlotOf(static_cast<void (Class::*)(int (*)(const T&, const T&))>(&Class::Sort))},
        {"Move", SlotOf(&Class::Move)}};
}

const Table g_listSlots = {
    {"InsertAfterCur", 26}, {"DetachAfterCur", 27}, {"Conbine", 28}, {"ReverseList", 29}, {"Rotate", 30}};

template <class Class>
Table ListSlots() {
    return {{"InsertAfterCur", SlotOf(&Class::InsertAfterCur)},
            {"DetachAfterCur", SlotOf(&Class::DetachAfterCur)},
            {"Conbine", SlotOf(&Class::Conbine)},
            {"ReverseList", SlotOf(&Class::ReverseList)},
            {"Rotate", SlotOf(&Class::Rotate)}};
}

// The object sort that an owning class adds for its objects.
template <class Class, class Object>
long ObjectSortSlot() {
    return SlotOf(static_cast<void (Class::*)(int (*)(const Object&, const Object&))>(&Class::Sort));
}

struct Object {
    int Cmp(const Object& other) const { return m_nKey < other.m_nKey ? -1 : m_nKey > other.m_nKey ? 1 : 0; }
    long m_nKey = 0;
};

TEST(Slots, TheProtocol) {
    EXPECT_THAT((ProtocolSlots<KyDynArrayBase<long>, long>()), ElementsAreArray(g_protocol));
}

TEST(Slots, TheDynamicArrayAddsNone) {
    EXPECT_THAT((ProtocolSlots<KyDynArray<long>, long>()), ElementsAreArray(g_protocol));
    EXPECT_EQ(SlotsOf<KyDynArray<long>>(), 26);
}

TEST(Slots, TheOwningArrayAddsThree) {
    using Class = KyDynPArray<Object>;

    const Table table =
        Joined(ProtocolSlots<Class, Object*>(), {{"ReleaseCur", SlotOf(&Class::ReleaseCur)},
                                                 {"TakeOffCur", SlotOf(&Class::TakeOffCur)},
                                                 {"Sort(objects)", ObjectSortSlot<Class, Object>()}});

    EXPECT_THAT(table, ElementsAreArray(Joined(
                           g_protocol, {{"ReleaseCur", 26}, {"TakeOffCur", 27}, {"Sort(objects)", 28}})));
    EXPECT_EQ(SlotsOf<Class>(), 29);
    EXPECT_EQ(SlotOf(&Class::ReleaseAll), nNotVirtual);
}

TEST(Slots, TheFixedArrayHasItsDestructorOnly) {
    EXPECT_EQ(SlotsOf<KyArray<long>>(), 2);
    EXPECT_EQ(SlotOf(&KyArray<long>::ReAllocate), nNotVirtual);
    EXPECT_TRUE(std::has_virtual_destructor_v<KyArray<long>>);
}

TEST(Slots, TheListAddsFiveAndTheDoublyLinkedListNone) {
    const Table expected = Joined(g_protocol, g_listSlots);

    EXPECT_THAT(Joined(ProtocolSlots<KyList<long>, long>(), ListSlots<KyList<long>>()),
                ElementsAreArray(expected));
    EXPECT_THAT(Joined(ProtocolSlots<KyDList<long>, long>(), ListSlots<KyDList<long>>()),
                ElementsAreArray(expected));
    EXPECT_EQ(SlotsOf<KyList<long>>(), 31);
    EXPECT_EQ(SlotsOf<KyDList<long>>(), 31);
}

TEST(Slots, TheOwningListAddsTheSortOfObjects) {
    using Class = KyPDList<Object>;

    const Table table = Joined(Joined(ProtocolSlots<Class, Object*>(), ListSlots<Class>()),
                               {{"Sort(objects)", ObjectSortSlot<Class, Object>()}});

    EXPECT_THAT(table, ElementsAreArray(Joined(Joined(g_protocol, g_listSlots), {{"Sort(objects)", 31}})));
    EXPECT_EQ(SlotsOf<Class>(), 32);
    EXPECT_EQ(SlotOf(&Class::ReleaseAll), nNotVirtual);
}

TEST(Slots, TheIndexedListAddsNoneAndTheOwningOneTheSortOfObjects) {
    using Owning = KyPXList<Object>;
    const Table expected = Joined(g_protocol, g_listSlots);

    const Table plain = Joined(ProtocolSlots<KyXList<long>, long>(), ListSlots<KyXList<long>>());
    const Table owning = Joined(Joined(ProtocolSlots<Owning, Object*>(), ListSlots<Owning>()),
                                {{"Sort(objects)", ObjectSortSlot<Owning, Object>()}});

    EXPECT_THAT(plain, ElementsAreArray(expected));
    EXPECT_EQ(SlotsOf<KyXList<long>>(), 31);
    EXPECT_THAT(owning, ElementsAreArray(Joined(expected, {{"Sort(objects)", 31}})));
    EXPECT_EQ(SlotsOf<Owning>(), 32);
}

template <class Class>
Table QueueSlots() {
    return {{"Reset", SlotOf(&Class::Reset)},
            {"GetLength", SlotOf(&Class::GetLength)},
            {"operator[]", SlotOf(&Class::operator[])},
            {"GetHeadData", SlotOf(&Class::GetHeadData)},
            {"GetTailData", SlotOf(&Class::GetTailData)},
            {"EnQuene", SlotOf(&Class::EnQuene)},
            {"DeQuene", SlotOf(&Class::DeQuene)}};
}

TEST(Slots, TheQueuesHaveSevenThenTheirDestructor) {
    const Table expected = {{"Reset", 0},       {"GetLength", 1}, {"operator[]", 2}, {"GetHeadData", 3},
                            {"GetTailData", 4}, {"EnQuene", 5},   {"DeQuene", 6}};

    EXPECT_THAT(QueueSlots<KyQuene<long>>(), ElementsAreArray(expected));
    EXPECT_THAT(QueueSlots<KyListQuene<long>>(), ElementsAreArray(expected));
    EXPECT_THAT(QueueSlots<KyPDListQuene<Object>>(), ElementsAreArray(expected));
    EXPECT_EQ(SlotsOf<KyListQuene<long>>(), 9);
    EXPECT_EQ(SlotsOf<KyPDListQuene<Object>>(), 9);
}

// Fields

template <class Class, class Field>
long OffsetOf(const Class& object, const Field& field) {
    return static_cast<long>(reinterpret_cast<const char*>(&field) - reinterpret_cast<const char*>(&object));
}

template <class Class>
Table ProtocolFields(const Class& object) {
    return {{"m_nLength", OffsetOf(object, object.m_nLength)},
            {"m_nCurIndex", OffsetOf(object, object.m_nCurIndex)}};
}

template <class Class>
Table ArrayFields(const Class& object) {
    return Joined(ProtocolFields(object), {{"m_pData", OffsetOf(object, object.m_pData)},
                                           {"m_nCapacity", OffsetOf(object, object.m_nCapacity)},
                                           {"m_nGrowBy", OffsetOf(object, object.m_nGrowBy)},
                                           {"size", static_cast<long>(sizeof(Class))}});
}

template <class Class>
Table ListFields(const Class& object) {
    return Joined(ProtocolFields(object), {{"m_pCurNode", OffsetOf(object, object.m_pCurNode)},
                                           {"m_pHead", OffsetOf(object, object.m_pHead)},
                                           {"m_pTail", OffsetOf(object, object.m_pTail)}});
}

const Table g_arrayFields = {{"m_nLength", 8},    {"m_nCurIndex", 16}, {"m_pData", 24},
                             {"m_nCapacity", 32}, {"m_nGrowBy", 40},   {"size", 48}};
const Table g_listFields = {
    {"m_nLength", 8}, {"m_nCurIndex", 16}, {"m_pCurNode", 24}, {"m_pHead", 32}, {"m_pTail", 40}};

TEST(Fields, TheArrays) {
    EXPECT_EQ(sizeof(KyDynArrayBase<char>), 24U);
    EXPECT_THAT(ArrayFields(KyDynArray<char>()), ElementsAreArray(g_arrayFields));
    EXPECT_THAT(ArrayFields(KyDynPArray<Object>()), ElementsAreArray(g_arrayFields));
    static_assert(std::is_same_v<decltype(KyDynArray<char>::m_nLength), long>);
    static_assert(std::is_same_v<decltype(KyDynArray<char>::m_nCurIndex), long>);
    static_assert(std::is_same_v<decltype(KyDynArray<char>::m_pData), char*>);
    static_assert(std::is_same_v<decltype(KyDynArray<char>::m_nCapacity), long>);
    static_assert(std::is_same_v<decltype(KyDynArray<char>::m_nGrowBy), long>);
    static_assert(std::is_same_v<decltype(KyDynPArray<Object>::m_pData), Object**>);
}

TEST(Fields, TheFixedArray) {
    const KyArray<wchar_t> array;

    const Table table = {{"m_pData", OffsetOf(array, array.m_pData)},
                         {"m_nLength", OffsetOf(array, array.m_nLength)},
                         {"size", static_cast<long>(sizeof(array))}};

    EXPECT_THAT(table, ElementsAreArray(Table{{"m_pData", 8}, {"m_nLength", 16}, {"size", 24}}));
    static_assert(std::is_same_v<decltype(array.m_pData), wchar_t*>);
    static_assert(std::is_same_v<decltype(array.m_nLength), long>);
}

TEST(Fields, TheLists) {
    EXPECT_THAT(ListFields(KyList<char>()), ElementsAreArray(g_listFields));
    EXPECT_THAT(ListFields(KyDList<char>()), ElementsAreArray(g_listFields));
    EXPECT_THAT(ListFields(KyPDList<Object>()), ElementsAreArray(g_listFields));
    EXPECT_EQ(sizeof(KyList<char>), 48U);
    EXPECT_EQ(sizeof(KyDList<char>), 48U);
    EXPECT_EQ(sizeof(KyPDList<Object>), 48U);
    static_assert(std::is_same_v<decltype(KyDList<char>::m_pCurNode), KyListNode<char>*>);
    static_assert(std::is_same_v<decltype(KyDList<char>::m_pHead), KyListNode<char>*>);
    static_assert(std::is_same_v<decltype(KyDList<char>::m_pTail), KyListNode<char>*>);
}

TEST(Fields, TheIndexedLists) {
    const KyXList<char> plain;
    const KyPXList<Object> owning;

    const Table ofPlain = Joined(ListFields(plain), {{"m_arrIndex", OffsetOf(plain, plain.m_arrIndex)},
                                                     {"m_nStep", OffsetOf(plain, plain.m_nStep)}});
    const Table ofOwning = Joined(ListFields(owning), {{"m_arrIndex", OffsetOf(owning, owning.m_arrIndex)},
                                                       {"m_nStep", OffsetOf(owning, owning.m_nStep)}});

    const Table expected = Joined(g_listFields, {{"m_arrIndex", 48}, {"m_nStep", 96}});
    EXPECT_THAT(ofPlain, ElementsAreArray(expected));
    EXPECT_THAT(ofOwning, ElementsAreArray(expected));
    EXPECT_EQ(sizeof(plain), 104U);
    EXPECT_EQ(sizeof(owning), 104U);
    static_assert(std::is_same_v<decltype(plain.m_arrIndex), KyDynArray<KyDListNode<char>*>>);
    static_assert(std::is_same_v<decltype(owning.m_arrIndex), KyDynArray<KyDListNode<Object*>*>>);
    static_assert(std::is_same_v<decltype(plain.m_nStep), long>);
}

TEST(Fields, TheNodes) {
    const KyListNode<char> node{};
    const KyDListNode<char> doubleNode{};

    EXPECT_EQ(OffsetOf(node, node.m_data), 0);
    EXPECT_EQ(OffsetOf(node, node.m_pNext), 8);
    EXPECT_EQ(sizeof(node), 16U);
    EXPECT_EQ(OffsetOf(doubleNode, doubleNode.m_data), 0);
    EXPECT_EQ(OffsetOf(doubleNode, doubleNode.m_pNext), 8);
    EXPECT_EQ(OffsetOf(doubleNode, doubleNode.m_pPre), 16);
    EXPECT_EQ(sizeof(doubleNode), 24U);
    static_assert(std::is_same_v<decltype(KyDListNode<char>::m_pNext), KyListNode<char>*>);
    static_assert(std::is_same_v<decltype(KyDListNode<char>::m_pPre), KyDListNode<char>*>);
}

TEST(Fields, TheQueues) {
    const KyListQuene<char> values;
    const KyPDListQuene<Object> objects;

    EXPECT_EQ(sizeof(KyQuene<char>), 16U);
    EXPECT_EQ(OffsetOf(values, values.m_nMaxLength), 8);
    EXPECT_EQ(OffsetOf(values, values.m_list), 16);
    EXPECT_EQ(sizeof(values), 64U);
    EXPECT_EQ(OffsetOf(objects, objects.m_nMaxLength), 8);
    EXPECT_EQ(OffsetOf(objects, objects.m_list), 16);
    EXPECT_EQ(sizeof(objects), 64U);
    static_assert(std::is_same_v<decltype(values.m_nMaxLength), long>);
}

}  // namespace
