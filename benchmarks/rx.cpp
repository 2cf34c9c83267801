// Kinship tests beside the language's own dynamic_cast, on classes rooted in KyRxRunTimeClass: Leaf is four
// classes deep, Stranger is no kin of it. A case's name is job/case/library.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "VexaBase/rx/KyRxClass.h"

namespace {

class Base : public KyRxRunTimeClass {
    KY_DECLARE_CLASS(Base)
};
class Middle : public Base {
    KY_DECLARE_CLASS(Middle)
};
class Leaf : public Middle {
    KY_DECLARE_CLASS(Leaf)
};
class Stranger : public KyRxRunTimeClass {
    KY_DECLARE_CLASS(Stranger)
};

KY_IMPLEMENT_CLASS(Base, 1, KyRxRunTimeClass)
KY_IMPLEMENT_CLASS(Middle, 2, Base)
KY_IMPLEMENT_CLASS(Leaf, 3, Middle)
KY_IMPLEMENT_CLASS(Stranger, 4, KyRxRunTimeClass)

// The three ways to ask whether an object is a Target.

template <class Target>
class ByDescriptor {
public:
    bool operator()(KyRxRunTimeClass* pObject) const {
        return pObject->GetCI()->IsClassOf(Target::GetStaticCI());
    }
};

template <class Target>
class ByName {
public:
    bool operator()(KyRxRunTimeClass* pObject) const { return pObject->GetCI()->IsClassOf(m_sName.c_str()); }

private:
    // A text of its own: nothing can be told from its address.
    std::string m_sName = Target::GetStaticCI()->m_pszName;
};

template <class Target>
class ByDynamicCast {
public:
    bool operator()(KyRxRunTimeClass* pObject) const {
        auto* pTarget = dynamic_cast<Target*>(pObject);
        benchmark::DoNotOptimize(pTarget);
        return pTarget != nullptr;
    }
};

template <template <class> class IsA, class Target>
void AskOne(benchmark::State& state) {
    const IsA<Target> isA;
    Leaf leaf;
    KyRxRunTimeClass* pObject = &leaf;
    if (isA(pObject) != ByDynamicCast<Target>()(pObject)) {
        std::fputs("class kinship: the library and dynamic_cast differ\n", stderr);
        std::abort();
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(pObject);
        benchmark::DoNotOptimize(isA(pObject));
    }
}
BENCHMARK(AskOne<ByDescriptor, Leaf>)->Name("class kinship/own class/ours, by descriptor");
BENCHMARK(AskOne<ByName, Leaf>)->Name("class kinship/own class/ours, by name");
BENCHMARK(AskOne<ByDynamicCast, Leaf>)->Name("class kinship/own class/dynamic_cast");
BENCHMARK(AskOne<ByDescriptor, Base>)->Name("class kinship/root/ours, by descriptor");
BENCHMARK(AskOne<ByName, Base>)->Name("class kinship/root/ours, by name");
BENCHMARK(AskOne<ByDynamicCast, Base>)->Name("class kinship/root/dynamic_cast");
BENCHMARK(AskOne<ByDescriptor, Stranger>)->Name("class kinship/no kin/ours, by descriptor");
BENCHMARK(AskOne<ByName, Stranger>)->Name("class kinship/no kin/ours, by name");
BENCHMARK(AskOne<ByDynamicCast, Stranger>)->Name("class kinship/no kin/dynamic_cast");

// Objects of all four classes in random order, each asked for all four.
template <template <class> class IsA>
void AskMixed(benchmark::State& state) {
    constexpr std::size_t nObjects = 4096;
    std::mt19937 engine(1);
    std::vector<std::unique_ptr<KyRxRunTimeClass>> objects;
    for (std::size_t i = 0; i < nObjects; ++i) {
        const std::array<KyRxRunTimeClass* (*)(), 4> make = {
            []() -> KyRxRunTimeClass* { return new Base; }, []() -> KyRxRunTimeClass* { return new Middle; },
            []() -> KyRxRunTimeClass* { return new Leaf; },
            []() -> KyRxRunTimeClass* { return new Stranger; }};
        objects.emplace_back(make[engine() % make.size()]());
    }
    const IsA<Base> isBase;
    const IsA<Middle> isMiddle;
    const IsA<Leaf> isLeaf;
    const IsA<Stranger> isStranger;
    std::size_t i = 0;
    for (auto _ : state) {
        KyRxRunTimeClass* pObject = objects[++i % nObjects].get();
        benchmark::DoNotOptimize(isBase(pObject));
        benchmark::DoNotOptimize(isMiddle(pObject));
        benchmark::DoNotOptimize(isLeaf(pObject));
        benchmark::DoNotOptimize(isStranger(pObject));
    }
}
BENCHMARK(AskMixed<ByDescriptor>)->Name("class kinship/mixed/ours, by descriptor");
BENCHMARK(AskMixed<ByName>)->Name("class kinship/mixed/ours, by name");
BENCHMARK(AskMixed<ByDynamicCast>)->Name("class kinship/mixed/dynamic_cast");

}  // namespace
