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

RC_GTEST_PROP(KyRxClassInfo, KinshipIsWhatTheBaseListsUpToTheirFirstNullSay, ()) {
    const Hierarchy hierarchy = AnyHierarchy();
    std::deque<std::string> names;
    std::vector<std::unique_ptr<KyRxClassInfo>> infos;
    for (const std::vector<int>& bases : hierarchy) {
        KyRxClassInfo* pBases[5];
        for (std::size_t nSlot = 0; nSlot < 5; ++nSlot) {
            pBases[nSlot] = bases[nSlot] < 0 ? nullptr : infos[static_cast<std::size_t>(bases[nSlot])].get();
        }
        names.push_back("Class" + std::to_string(names.size()));
        infos.push_back(std::make_unique<KyRxClassInfo>(names.back().c_str(), 0, nullptr, pBases[0],
                                                        pBases[1], pBases[2], pBases[3], pBases[4]));
    }

    for (std::size_t i = 0; i < infos.size(); ++i) {
        const std::set<int> kin = KinOf(hierarchy, static_cast<int>(i));
        for (std::size_t j = 0; j < infos.size(); ++j) {
            const bool bIsKin = kin.count(static_cast<int>(j)) != 0;
            RC_ASSERT(infos[i]->IsClassOf(infos[j].get()) == bIsKin);
            RC_ASSERT(infos[i]->IsClassOf(names[j].c_str()) == bIsKin);
        }
    }
}

}  // namespace
