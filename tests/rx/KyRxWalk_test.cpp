// The kinship walk against a plain model, on random hierarchies: which classes are kin, by descriptor and by
// name.

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "VexaBase/rx/KyRxClass.h"

namespace {

/// A hierarchy by numbers: class i has the bases bases[i], all of them smaller than i; -1 is a null slot.
using Hierarchy = std::vector<std::vector<int>>;

Hierarchy AnyHierarchy() {
    Hierarchy hierarchy;
    const int nClasses = *rc::gen::inRange(1, 12);
    for (int i = 0; i < nClasses; ++i) {
        std::vector<int> bases;
        for (int nSlot = 0; nSlot < 5; ++nSlot) {
            bases.push_back(
                *rc::gen::weightedOneOf<int>({{2, rc::gen::just(-1)}, {3, rc::gen::inRange(-1, i)}}));
        }
        hierarchy.push_back(bases);
    }
    return hierarchy;
}

std::set<int> KinOf(const Hierarchy& hierarchy, int i) {
    std::set<int> kin{i};
    for (const int nBase : hierarchy[static_cast<std::size_t>(i)]) {
        if (nBase < 0) break;
        kin.merge(KinOf(hierarchy, nBase));
    }
    return kin;
}

/// A hierarchy of many levels: most classes have the one before them as their only base.
Hierarchy AnyDeepHierarchy() {
    Hierarchy hierarchy;
    const int nClasses = *rc::gen::inRange(30, 60);
    for (int i = 0; i < nClasses; ++i) {
        std::vector<int> bases(5, -1);
        bases[0] = i - 1;
        if (*rc::gen::inRange(0, 8) == 0) {
            bases[0] = *rc::gen::inRange(-1, i);
            bases[1] = *rc::gen::inRange(-1, i);
        }
        hierarchy.push_back(bases);
    }
    return hierarchy;
}

/// The descriptors of a hierarchy's classes. Their names differ in their last characters only.
class Descriptors {
public:
    explicit Descriptors(const Hierarchy& hierarchy) {
        for (const std::vector<int>& bases : hierarchy) {
            KyRxClassInfo* pBases[5];
            for (std::size_t nSlot = 0; nSlot < 5; ++nSlot) {
                pBases[nSlot] =
                    bases[nSlot] < 0 ? nullptr : m_infos[static_cast<std::size_t>(bases[nSlot])].get();
            }
            m_names.push_back("Class" + std::to_string(m_names.size()));
            m_infos.push_back(std::make_unique<KyRxClassInfo>(m_names.back().c_str(), 0, nullptr, pBases[0],
                                                              pBases[1], pBases[2], pBases[3], pBases[4]));
        }
    }

    std::size_t Count() const { return m_infos.size(); }
    KyRxClassInfo& Info(std::size_t i) { return *m_infos[i]; }
    const std::string& Name(std::size_t i) const { return m_names[i]; }

private:
    std::deque<std::string> m_names;
    std::vector<std::unique_ptr<KyRxClassInfo>> m_infos;
};

void CompareKinship(const Hierarchy& hierarchy) {
    Descriptors descriptors(hierarchy);
    for (std::size_t i = 0; i < descriptors.Count(); ++i) {
        const std::set<int> kin = KinOf(hierarchy, static_cast<int>(i));
        for (std::size_t j = 0; j < descriptors.Count(); ++j) {
            const bool bIsKin = kin.count(static_cast<int>(j)) != 0;
            RC_ASSERT(descriptors.Info(i).IsClassOf(&descriptors.Info(j)) == bIsKin);
            RC_ASSERT(descriptors.Info(i).IsClassOf(descriptors.Name(j).c_str()) == bIsKin);
        }
    }
}

RC_GTEST_PROP(KyRxClassInfo, KinshipIsWhatTheBaseListsUpToTheirFirstNullSay, ()) {
    CompareKinship(AnyHierarchy());
}

RC_GTEST_PROP(KyRxClassInfo, KinshipHoldsOverAnyNumberOfLevels, ()) { CompareKinship(AnyDeepHierarchy()); }

TEST(KyRxClassInfo, ABaseThatIsChangedAfterAQuestionCountsInTheNext) {
    KyRxClassInfo oldBase("Old", 0, nullptr);
    KyRxClassInfo newBase("New", 0, nullptr);
    KyRxClassInfo middle("Middle", 0, nullptr, &oldBase);
    const KyRxClassInfo leaf("Leaf", 0, nullptr, &middle);
    EXPECT_TRUE(leaf.IsClassOf(&oldBase));
    EXPECT_TRUE(leaf.IsClassOf("Old"));

    middle.m_pBases[0] = &newBase;

    EXPECT_FALSE(leaf.IsClassOf(&oldBase));
    EXPECT_FALSE(leaf.IsClassOf("Old"));
    EXPECT_TRUE(leaf.IsClassOf(&newBase));
    EXPECT_TRUE(leaf.IsClassOf("New"));
}

TEST(KyRxClassInfo, AClassNameIsNotReadOnceABaseHasAnswered) {
    KyRxClassInfo root("Root", 0, nullptr);
    KyRxClassInfo middle(nullptr, 0, nullptr, &root);
    const KyRxClassInfo leaf(nullptr, 0, nullptr, &middle);
    const KyRxClassInfo joint(nullptr, 0, nullptr, &root, &middle);

    EXPECT_TRUE(leaf.IsClassOf("Root"));
    EXPECT_TRUE(joint.IsClassOf("Root"));
}

}  // namespace
