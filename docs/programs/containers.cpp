// One function for every container: both functions below know the protocol
// only.

#include <VexaBase/containers/KyDList.h>
#include <VexaBase/containers/KyDynArray.h>

#include <algorithm>
#include <iostream>

namespace {

/// Walks by range, which leaves the cursor alone.
void Print(const char* name, const KyDynArrayBase<long>& numbers) {
    std::cout << name << ':';
    for (const long n : numbers) std::cout << ' ' << n;
    std::cout << "  (length " << numbers.GetLength() << ", cursor "
              << numbers.GetCurIndex() << ")\n";
}

/// Walks by cursor. DelCur steps back by one, so MoveToNext reaches the element
/// that followed.
void RemoveOdd(KyDynArrayBase<long>& numbers) {
    numbers.MoveToFirst();
    while (numbers.m_nCurIndex >= 0 &&
           numbers.m_nCurIndex < numbers.m_nLength) {
        if (numbers.GetCurData() % 2 != 0) numbers.DelCur();
        numbers.MoveToNext();
    }
}

}  // namespace

int main() {
    KyDynArray<long> array;
    KyDList<long> list;
    for (long n : {3, 1, 4, 1, 5, 9, 2, 6}) {
        array.Append(n);
        list.Append(n);
    }
    Print("array", array);
    Print("list ", list);

    RemoveOdd(array);
    RemoveOdd(list);
    Print("array", array);
    Print("list ", list);

    list.Insert(1, 8);  // at position 1; the cursor ends on what was inserted
    list.SetCurData(7);
    list.Move(0, 4);  // the first element to the end
    Print("list ", list);

    list.Sort(false);  // descending, stable
    // Every container is a range.
    const long most = *std::max_element(array.begin(), array.end());
    Print("list ", list);
    std::cout << "the array's largest is " << most << '\n';

    array[5] = 0;  // past the end: the array first grows to 6 elements
    array.SetCurData(most + 1);
    std::cout << "the array's length is " << array.GetLength() << ", its last "
              << *array.GetLast() << '\n';
}
