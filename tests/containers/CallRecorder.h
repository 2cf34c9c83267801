// Containers that write down every virtual call made on them, so that a test can state the sequence that a
// composed operation makes.
#pragma once

#include <string>
#include <utility>
#include <vector>

/// A Container whose virtual operations note their name and numeric arguments before they run.
template <class Container>
class Recording : public Container {
public:
    using Container::Container;
    using T = typename Container::value_type;
    using Compare = int (*)(const T&, const T&);
    using Container::Sort;

    void ReAllocate(long n) override {
        Note("ReAllocate", n);
        Container::ReAllocate(n);
    }
    void SetLength(long n, bool bKeep) override {
        Note("SetLength", n, bKeep ? 1 : 0);
        Container::SetLength(n, bKeep);
    }
    void Reset() override {
        Note("Reset");
        Container::Reset();
    }
    T& GetCurData() override {
        Note("GetCurData");
        return Container::GetCurData();
    }
    void SetCurData(const T& x) override {
        Note("SetCurData");
        Container::SetCurData(x);
    }
    void MoveToFirst() override {
        Note("MoveToFirst");
        Container::MoveToFirst();
    }
    void MoveToNext() override {
        Note("MoveToNext");
        Container::MoveToNext();
    }
    void MoveToPre() override {
        Note("MoveToPre");
        Container::MoveToPre();
    }
    void MoveToLast() override {
        Note("MoveToLast");
        Container::MoveToLast();
    }
    void MoveTo(long i) override {
        Note("MoveTo", i);
        Container::MoveTo(i);
    }
    T& operator[](long i) override {
        Note("operator[]", i);
        return Container::operator[](i);
    }
    T* GetFirst() const override {
        Note("GetFirst");
        return Container::GetFirst();
    }
    T* GetNext(const T* p) const override {
        Note("GetNext");
        return Container::GetNext(p);
    }
    T* GetPre(const T* p) const override {
        Note("GetPre");
        return Container::GetPre(p);
    }
    T* GetLast() const override {
        Note("GetLast");
        return Container::GetLast();
    }
    T* GetAt(long i) const override {
        Note("GetAt", i);
        return Container::GetAt(i);
    }
    void InsertCur(const T& x) override {
        Note("InsertCur");
        Container::InsertCur(x);
    }
    void Insert(long i, const T& x) override {
        Note("Insert", i);
        Container::Insert(i, x);
    }
    void InsertHead(const T& x) override {
        Note("InsertHead");
        Container::InsertHead(x);
    }
    long Append(const T& x) override {
        Note("Append");
        return Container::Append(x);
    }
    void DelCur() override {
        Note("DelCur");
        Container::DelCur();
    }
    void Sort(bool bAscending) override {
        Note("Sort", bAscending ? 1 : 0);
        Container::Sort(bAscending);
    }
    void Sort(Compare pfnCompare) override {
        Note("Sort");
        Container::Sort(pfnCompare);
    }
    bool Move(long from, long to) override {
        Note("Move", from, to);
        return Container::Move(from, to);
    }

    /// The calls since the last time this was asked, such as "MoveTo 3".
    std::vector<std::string> TakeCalls() { return std::exchange(m_calls, {}); }

protected:
    template <class... Numbers>
    void Note(std::string sCall, Numbers... numbers) const {
        ((sCall += ' ' + std::to_string(numbers)), ...);
        m_calls.push_back(std::move(sCall));
    }

private:
    mutable std::vector<std::string> m_calls;
};

/// The same for the owning array, with its own operations.
template <class Container>
class RecordingOwner : public Recording<Container> {
public:
    using Recording<Container>::Recording;

    void ReleaseCur() override {
        this->Note("ReleaseCur");
        Container::ReleaseCur();
    }
    typename Container::value_type TakeOffCur() override {
        this->Note("TakeOffCur");
        return Container::TakeOffCur();
    }
};
