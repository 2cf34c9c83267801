// Where the cursor stands after each operation, on [A B C D]: in an array and
// in a list. The current element stands in brackets; empty brackets are a
// cursor on no element.

#include <VexaBase/containers/KyDList.h>
#include <VexaBase/containers/KyDynArray.h>

#include <iomanip>
#include <iostream>
#include <string>

namespace {

using Container = KyDynArrayBase<char>;
using Operation = void (*)(Container&);

std::string Show(const Container& container) {
    const long nCurrent = container.GetCurIndex();
    std::string row = nCurrent < 0 ? "[] " : "";
    long i = 0;
    for (const char c : container) {
        row += i == nCurrent ? std::string("[") + c + "] "
                             : std::string(1, c) + ' ';
        ++i;
    }
    if (nCurrent >= i) row += "[] ";
    return row + '(' + std::to_string(nCurrent) + ')';
}

/// Applies an operation to [A B C D] with the cursor at nStart, and shows the
/// outcome.
template <class Concrete>
std::string After(long nStart, Operation operate) {
    Concrete container;
    for (const char c : {'A', 'B', 'C', 'D'}) container.Append(c);
    container.MoveTo(nStart);
    operate(container);
    return Show(container);
}

void Columns(const std::string& first, const std::string& second,
             const std::string& third) {
    std::cout << std::left << std::setw(20) << first << std::setw(20) << second
              << third << '\n';
}

void Heading(const std::string& name) {
    Columns(name, "array", "list");
    std::cout << std::string(56, '-') << '\n';
}

void Row(const char* pszName, long nStart, Operation operate) {
    Columns(pszName, After<KyDynArray<char>>(nStart, operate),
            After<KyDList<char>>(nStart, operate));
}

/// The lists' own operations.
void ListRow(const char* pszName, long nStart,
             void (*operate)(KyDList<char>&)) {
    KyDList<char> list;
    for (const char c : {'A', 'B', 'C', 'D'}) list.Append(c);
    list.MoveTo(nStart);
    operate(list);
    Columns(pszName, "", Show(list));
}

}  // namespace

int main() {
    Heading("on C");
    Row("MoveToFirst()", 2, [](Container& c) { c.MoveToFirst(); });
    Row("MoveToPre()", 2, [](Container& c) { c.MoveToPre(); });
    Row("MoveToNext()", 2, [](Container& c) { c.MoveToNext(); });
    Row("MoveToLast()", 2, [](Container& c) { c.MoveToLast(); });
    Row("MoveTo(1)", 2, [](Container& c) { c.MoveTo(1); });
    Row("c[1]", 2, [](Container& c) { c[1] = 'x'; });
    Row("c[5]", 2, [](Container& c) { c[4] = 'x', c[5] = 'y'; });
    Row("GetAt(1)", 2, [](Container& c) { *c.GetAt(1) = 'x'; });
    Row("InsertCur('x')", 2, [](Container& c) { c.InsertCur('x'); });
    Row("Insert(1, 'x')", 2, [](Container& c) { c.Insert(1, 'x'); });
    Row("InsertHead('x')", 2, [](Container& c) { c.InsertHead('x'); });
    Row("Append('x')", 2, [](Container& c) { c.Append('x'); });
    Row("DelCur()", 2, [](Container& c) { c.DelCur(); });
    Row("Move(0, 3)", 2, [](Container& c) { c.Move(0, 3); });
    Row("Sort(false)", 2, [](Container& c) { c.Sort(false); });
    Row("SetLength(2, true)", 2, [](Container& c) { c.SetLength(2, true); });
    Row("Reset()", 2, [](Container& c) { c.Reset(); });
    ListRow("InsertAfterCur('x')", 2,
            [](KyDList<char>& l) { l.InsertAfterCur('x'); });
    ListRow("Rotate(3, 0)", 2, [](KyDList<char>& l) { l.Rotate(3, 0); });

    std::cout << '\n';
    Heading("at the ends");
    Row("A: MoveToPre()", 0, [](Container& c) { c.MoveToPre(); });
    Row("A: DelCur()", 0, [](Container& c) { c.DelCur(); });
    Row("    MoveToNext()", 0,
        [](Container& c) { c.DelCur(), c.MoveToNext(); });
    Row("D: MoveToNext()", 3, [](Container& c) { c.MoveToNext(); });
    Row("    MoveToNext()", 3,
        [](Container& c) { c.MoveToNext(), c.MoveToNext(); });
    Row("D: DelCur()", 3, [](Container& c) { c.DelCur(); });
    Row("MoveTo(-1)", 2, [](Container& c) { c.MoveTo(-1); });
    Row("    MoveToNext()", 2,
        [](Container& c) { c.MoveTo(-1), c.MoveToNext(); });
    Row("MoveTo(9)", 2, [](Container& c) { c.MoveTo(9); });
}
