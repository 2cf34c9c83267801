// What lists can do beyond the protocol: they insert behind the cursor,
// reverse, turn and splice, and their elements never change their addresses.

#include <VexaBase/containers/KyDList.h>

#include <iostream>
#include <string>

namespace {

using Train = KyDList<std::string>;

void Print(const char* name, const Train& train) {
    std::cout << name;
    for (const std::string& wagon : train) std::cout << ' ' << wagon;
    std::cout << '\n';
}

}  // namespace

int main() {
    Train local;
    for (const char* wagon : {"mail", "coal", "milk"}) local.Append(wagon);

    local.MoveTo(0);  // inserting moves the cursor along
    std::string* const steel = local.InsertAfterCur("steel");
    local.InsertAfterCur("timber");
    Print("local:  ", local);

    Train express;
    express.Append("sleeper");
    express.Append("diner");
    // Takes local's wagons from position 3 on, as they are.
    express.Conbine(local, 3);
    Print("express:", express);
    Print("local:  ", local);

    express.Rotate(3, 0);  // the ring turns until the one at 3 stands at 0
    Print("turned: ", express);
    express.ReverseList();
    Print("reverse:", express);

    // An element's address is its place: it was valid all the time.
    std::cout << "before " << *steel << " comes " << *local.GetPre(steel)
              << ", behind it " << *local.GetNext(steel) << '\n';
}
