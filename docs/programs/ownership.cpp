// Who deletes what, and when.

#include <VexaBase/containers/KyDList.h>
#include <VexaBase/containers/KyDynPArray.h>
#include <VexaBase/containers/KyPDList.h>

#include <iostream>
#include <memory>

namespace {

/// Tells of its end. The destructor is virtual, because an owning container
/// deletes through T.
class Item {
public:
    explicit Item(char c) : m_c(c) {}
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;
    virtual ~Item() { std::cout << "   deleted: " << m_c << '\n'; }
    const char m_c;
};

}  // namespace

int main() {
    std::cout << "an owning array adopts what is stored in it\n";
    KyDynPArray<Item> array;
    for (const char c : {'a', 'b', 'c', 'd', 'e'}) array.Append(new Item(c));

    std::cout << "DelCur deletes the current object\n";
    array.MoveTo(0);
    array.DelCur();

    std::cout << "TakeOffCur hands it to the caller and leaves a null slot\n";
    array.MoveTo(0);
    std::unique_ptr<Item> taken(array.TakeOffCur());
    array.DelCur();  // removes the null slot: nothing to delete

    std::cout << "SetCurData overwrites without deleting: release what was "
                 "there first\n";
    array.MoveTo(0);
    array.ReleaseCur();
    array.SetCurData(new Item('C'));

    std::cout << "shrinking deletes what is cut off\n";
    array.SetLength(2, true);

    std::cout << "an owning list is emptied of one object alive\n";
    KyPDList<Item> list;
    list.Append(new Item('x'));
    list.Append(new Item('y'));
    std::unique_ptr<Item> kept(list.GetCurData());  // the cursor is on y
    list.SetCurData(nullptr);                       // null first ...
    list.DelCur();  // ... then remove the element

    std::cout << "a plain list owns its nodes only\n";
    {
        KyDList<Item*> visitors;
        for (Item* item : array) visitors.Append(item);
    }

    std::cout << "the end of main: kept, list, taken, array\n";
}
