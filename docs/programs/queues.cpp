// A queue of values with a bound, and a queue that owns what waits in it.

#include <VexaBase/containers/KyQuene.h>

#include <iostream>
#include <memory>
#include <string>

namespace {

struct Parcel {
    explicit Parcel(std::string to) : m_strTo(std::move(to)) {}
    Parcel(const Parcel&) = delete;
    Parcel& operator=(const Parcel&) = delete;
    ~Parcel() { std::cout << "the parcel to " << m_strTo << " is gone\n"; }
    std::string m_strTo;
};

}  // namespace

int main() {
    KyListQuene<long> tickets(2);  // at most two
    for (long n = 101; n <= 103; ++n) {
        std::cout << "ticket " << n
                  << (tickets.EnQuene(n) ? " waits\n" : " is refused\n");
    }
    long next = 0;
    while (tickets.DeQuene(next))
        std::cout << "ticket " << next << " is called\n";

    KyPDListQuene<Parcel> shelf;
    for (const char* to : {"Oslo", "Riga", "Bern"})
        shelf.EnQuene(new Parcel(to));

    Parcel* first = nullptr;
    shelf.DeQuene(first);  // handed over: it is ours now
    const std::unique_ptr<Parcel> ours(first);
    std::cout << "taken: " << ours->m_strTo
              << "; waiting: " << shelf.GetLength() << '\n';
    shelf.Reset();  // deletes what still waits
    std::cout << "the shelf is empty\n";
}
