// The library's classes in a program whose debug information has no more of some of them than their names.
#include "VexaBase/containers/KyDList.h"
#include "VexaBase/containers/KyDynArray.h"
#include "VexaBase/graph/KyGraph.h"
#include "VexaBase/string/KyString.h"

namespace {

void Stop() {}

}  // namespace

int main() {
    KyDList<long> numbers;
    for (const long n : {3L, 1L, 2L}) numbers.Append(n);
    const KyString string(L"Ward 9");
    KyDList<KyString> list;
    list.Append(string);
    KyDynArray<KyString> array(4);
    array.Append(string);
    const KyGraph graph;
    Stop();
}
