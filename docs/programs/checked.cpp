// A broken precondition, compiled with -DKY_CHECKED=1: one line on standard
// error, then abort().

#include <VexaBase/containers/KyDList.h>

int main() {
    KyDList<long> list;
    list.Append(1);
    list.MoveToNext();  // past the end: on no element
    list.DelCur();      // so there is nothing to remove
}
