// Behaviours that surprise, each in a few lines. What a piece prints stands
// between two lines with its name.

#include <VexaBase/containers/KyDList.h>
#include <VexaBase/containers/KyDynArray.h>
#include <VexaBase/containers/KyDynPArray.h>
#include <VexaBase/event/KyEventReactor.h>
#include <VexaBase/ga/GA_Population.h>
#include <VexaBase/graph/KyGraph.h>
#include <VexaBase/stream/KyDynArrayStreamEx.h>
#include <VexaBase/string/CompareLabel.h>
#include <VexaBase/string/KyString.h>

#include <iostream>

namespace {

template <class Container>
void Fill(Container& container, const char* pszElements) {
    for (; *pszElements != 0; ++pszElements) container.Append(*pszElements);
}

template <class Container>
void Print(const Container& container) {
    for (const auto c : container) std::cout << static_cast<char>(c);
    std::cout << '\n';
}

void BackwardMove() {
    //! [backward move]
    KyDynArray<char> array;
    KyDList<char> list;
    Fill(array, "ABCD");
    Fill(list, "ABCD");
    array.Move(2, 0);
    list.Move(2, 0);
    Print(array);
    Print(list);
    //! [backward move]
}

void Indexing() {
    //! [indexing]
    KyDList<char> list;
    Fill(list, "AB");
    list.MoveToFirst();
    list[3] = 'D';
    list[2] = 'C';
    std::cout << "length " << list.GetLength() << ", cursor "
              << list.GetCurIndex() << '\n';
    //! [indexing]
}

void InsertOutside() {
    //! [insert outside]
    KyDList<char> list;
    Fill(list, "ABCD");
    list.Insert(99, 'x');
    Print(list);
    //! [insert outside]
}

void Ring() {
    //! [ring]
    KyDList<char> list;
    Fill(list, "ABCD");
    list.MoveToLast();
    for (int i = 0; i < 3; ++i) {
        std::cout << list.GetCurIndex() << ' ';
        list.MoveToNext();
    }
    std::cout << '\n';
    //! [ring]
}

void Reverse() {
    //! [reverse]
    KyDList<char> list;
    Fill(list, "ABCDE");
    list.MoveTo(1);  // on B
    list.ReverseList();
    Print(list);
    std::cout << "on " << list.GetCurData() << ", index " << list.GetCurIndex()
              << '\n';
    list.MoveToFirst();  // from here on the index can be trusted again
    //! [reverse]
}

void SetLength() {
    //! [set length]
    KyDynArray<char> bytes(100);
    KyDynPArray<KyGraphNode> objects(100);
    bytes.SetLength(0, true);
    objects.SetLength(0, true);
    std::cout << "capacity " << bytes.m_nCapacity << " and "
              << objects.m_nCapacity << '\n';
    //! [set length]
}

void Overwrite() {
    //! [overwrite]
    KyString text(L"summer");
    text.Copy(L"w", 0);  // writing over the middle never shortens
    Print(text);
    //! [overwrite]
}

void Strip() {
    //! [strip]
    KyString text(L"10");
    text << 0.0;
    Print(text);
    //! [strip]
}

void ReplaceNothing() {
    //! [replace nothing]
    KyString text(L"text");
    std::cout << text.Replace(L"", L"x") << '\n';
    Print(text);
    //! [replace nothing]
}

void Labels() {
    //! [labels]
    // All digits are one number; leading zeros do not count; of 2^32 + 1 the
    // low 32 bits count.
    std::cout << CompareLabel(L"a1b2", L"ab12") << ' '
              << CompareLabel(L"item 007", L"item 7") << ' '
              << CompareLabel(L"x 4294967297", L"x 1") << '\n';
    //! [labels]
}

void NoBytes() {
    //! [no bytes]
    char nothing = 0;
    KyDynArrayStreamEx stream(8);
    stream.Write(&nothing, 0);
    std::cout << stream.GetLength() << " bytes in "
              << stream.m_chunks.GetLength() << " chunk\n";
    //! [no bytes]
}

//! [reactors]
struct Always : KyEventReactor {
    void React(const wchar_t* /*pszName*/, void* /*pData*/) override {
        std::cout << "always\n";
    }
};
struct Once : KyEventReactor {
    void React(const wchar_t* /*pszName*/, void* /*pData*/) override {
        std::cout << "once\n";
        // The walk starts over at the first reactor that is left.
        KyUnRegisterReactor(this);
    }
};

void Reactors() {
    Always always;
    Once once;
    KyRegisterReactor(&always);
    KyRegisterReactor(&once);
    KySendEvent(L"bell", nullptr, 0);
    KyUnRegisterReactor(&always);
}
//! [reactors]

//! [check node]
struct Spoke : KyGraphArc {
    Spoke(KyGraphNode* pHub, int nAngle) : KyGraphArc(pHub), m_nAngle(nAngle) {}
    int CmpArc(const KyGraphArc& other) const override {
        return m_nAngle - static_cast<const Spoke&>(other).m_nAngle;
    }
    int m_nAngle;
};

void CheckNode() {
    auto* const hub = new KyGraphNode;
    KyGraph wheel;
    wheel << hub;
    for (const int angle : {1, 2, 3, 4}) wheel << new Spoke(hub, angle);

    for (KyGraphArc* arc :
         hub->m_lstArc) {  // turn the order round behind the graph's back
        auto* const spoke = static_cast<Spoke*>(arc);
        spoke->m_nAngle = 5 - spoke->m_nAngle;
    }
    wheel.CheckNode(0);
    for (KyGraphArc* arc : hub->m_lstArc)
        std::cout << static_cast<Spoke*>(arc)->m_nAngle << ' ';
    std::cout << '\n';
}
//! [check node]

void Show(const char* pszName, void (*show)()) {
    std::cout << '[' << pszName << "]\n";
    show();
    std::cout << '[' << pszName << "]\n";
}

}  // namespace

int main() {
    Show("backward move", BackwardMove);
    Show("indexing", Indexing);
    Show("insert outside", InsertOutside);
    Show("ring", Ring);
    Show("reverse", Reverse);
    Show("set length", SetLength);
    Show("overwrite", Overwrite);
    Show("strip", Strip);
    Show("replace nothing", ReplaceNothing);
    Show("labels", Labels);
    Show("no bytes", NoBytes);
    Show("reactors", Reactors);
    Show("check node", CheckNode);
}
