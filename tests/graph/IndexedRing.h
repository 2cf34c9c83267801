// A look at an indexed list from the outside: is the ring closed both ways, and the index exact?
#pragma once

#include <string>

#include "VexaBase/containers/KyXList.h"

/// Empty when everything is right, else the first thing that is not.
template <class T>
std::string FaultIn(const KyPXList<T>& list) {
    using Node = KyDListNode<T*>;
    const auto* const pHead = static_cast<const Node*>(list.m_pHead);
    const long nStep = list.m_nStep;
    if (list.m_arrIndex.m_nLength != (list.m_nLength + nStep - 1) / nStep) {
        return "the index has " + std::to_string(list.m_arrIndex.m_nLength) + " entries";
    }
    if (pHead->m_data != nullptr) return "the sentinel holds an element";
    long nPosition = -1;
    const Node* pNode = pHead;
    do {
        const auto* const pNext = static_cast<const Node*>(pNode->m_pNext);
        if (pNext->m_pPre != pNode) return "the ring is broken behind position " + std::to_string(nPosition);
        pNode = pNext;
        ++nPosition;
        if (nPosition == list.m_nLength) break;
        if (pNode != pHead && nPosition % nStep == 0 && list.m_arrIndex.m_pData[nPosition / nStep] != pNode) {
            return "the index entry for position " + std::to_string(nPosition) + " points elsewhere";
        }
        if (nPosition == list.m_nCurIndex && pNode != list.m_pCurNode)
            return "the cursor's node is not at its index";
    } while (pNode != pHead);
    if (pNode != pHead) return "the ring does not close behind the last element";
    if (nPosition != list.m_nLength) return "the ring has " + std::to_string(nPosition) + " nodes";
    if (list.m_pTail != pHead->m_pPre) return "the tail is not the last node";
    if (list.m_nCurIndex == -1 && list.m_pCurNode != pHead) return "the cursor's node is not the sentinel";
    return "";
}
