// Kinship tests beside the language's own dynamic_cast, on classes rooted in KyRxRunTimeClass: Leaf is four
// classes deep. A case's name is job/case/library.
#include <benchmark/benchmark.h>

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

template <class Target>
void ByDescriptor(benchmark::State& state) {
    Leaf leaf;
    KyRxRunTimeClass* pObject = &leaf;
    for (auto _ : state) {
        benchmark::DoNotOptimize(pObject);
        benchmark::DoNotOptimize(pObject->GetCI()->IsClassOf(Target::GetStaticCI()));
    }
}
BENCHMARK(ByDescriptor<Leaf>)->Name("kinship/own class/ours, by descriptor");
BENCHMARK(ByDescriptor<KyRxRunTimeClass>)->Name("kinship/root/ours, by descriptor");
BENCHMARK(ByDescriptor<Stranger>)->Name("kinship/no kin/ours, by descriptor");

template <class Target>
void ByName(benchmark::State& state) {
    Leaf leaf;
    KyRxRunTimeClass* pObject = &leaf;
    const char* const pszName = Target::GetStaticCI()->m_pszName;
    for (auto _ : state) {
        benchmark::DoNotOptimize(pObject);
        benchmark::DoNotOptimize(pObject->GetCI()->IsClassOf(pszName));
    }
}
BENCHMARK(ByName<Leaf>)->Name("kinship/own class/ours, by name");
BENCHMARK(ByName<KyRxRunTimeClass>)->Name("kinship/root/ours, by name");
BENCHMARK(ByName<Stranger>)->Name("kinship/no kin/ours, by name");

template <class Target>
void ByDynamicCast(benchmark::State& state) {
    Leaf leaf;
    KyRxRunTimeClass* pObject = &leaf;
    for (auto _ : state) {
        benchmark::DoNotOptimize(pObject);
        benchmark::DoNotOptimize(dynamic_cast<Target*>(pObject) != nullptr);
    }
}
BENCHMARK(ByDynamicCast<Leaf>)->Name("kinship/own class/dynamic_cast");
BENCHMARK(ByDynamicCast<Base>)->Name("kinship/root/dynamic_cast");
BENCHMARK(ByDynamicCast<Stranger>)->Name("kinship/no kin/dynamic_cast");

}  // namespace
