// CDelegateList1: a multicast delegate: an owned list of delegates of one argument, invoked in the
// order they were added. A delegate is found again by value (IsEqual), so the same target is in
// the list at most once.
#pragma once

#include "Common_h/BCTL/CNullPointerException.h"
#include "Common_h/BCTL/IDelegate1.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace BCTL::Delegates
{
template <typename R, typename A> class CDelegateList1
{
public:
    using DelegateType = IDelegate1<R, A>;

    CDelegateList1() = default;
    CDelegateList1(const CDelegateList1&) = delete;
    CDelegateList1& operator=(const CDelegateList1&) = delete;
    ~CDelegateList1() = default;

    // Appends pDelegate and owns it. When an equal delegate is in the list already, that one keeps
    // its place and pDelegate is destroyed. Null raises CNullPointerException.
    void Add(std::unique_ptr<DelegateType> pDelegate)
    {
        if (!pDelegate)
            throw Exceptions::CNullPointerException();
        if (Find(pDelegate.get()) == m_aEntries.end())
            m_aEntries.push_back(SEntry{std::move(pDelegate), false});
    }

    // Destroys the first entry equal to pDelegate, if any; pDelegate stays the caller's. Null
    // raises CNullPointerException. During Invoke the entry is only taken out of the list and is
    // destroyed when Invoke is over, as it may be the one running.
    void Remove(const IComparableDelegate* pDelegate)
    {
        if (!pDelegate)
            throw Exceptions::CNullPointerException();
        const auto it = Find(pDelegate);
        if (it == m_aEntries.end())
            return;
        if (m_nInvokeDepth > 0)
        {
            it->bRemoved = true;
            m_bPendingRemovals = true;
        }
        else
            m_aEntries.erase(it);
    }

    // Calls each delegate in list order, also those added by an earlier one during this call; the
    // result is the last one's. An exception from a delegate passes on and the ones behind it are
    // not called. An empty list gives R{}, or raises CNullPointerException if there is no R{}.
    R Invoke(A arg)
    {
        const CInvokeScope scope(*this);
        if constexpr (std::is_void_v<R>)
        {
            for (auto it = m_aEntries.begin(); it != m_aEntries.end(); ++it)
                if (!it->bRemoved)
                    it->pDelegate->Invoke(static_cast<A>(arg));
        }
        else
        {
            using CHeld = std::conditional_t<std::is_reference_v<R>,
                                             std::reference_wrapper<std::remove_reference_t<R>>, R>;
            std::optional<CHeld> result;
            for (auto it = m_aEntries.begin(); it != m_aEntries.end(); ++it)
                if (!it->bRemoved)
                    result.emplace(it->pDelegate->Invoke(static_cast<A>(arg)));
            if (result)
                return static_cast<R>(std::move(*result));
            if constexpr (std::is_default_constructible_v<R>)
                return R{};
            else
                throw Exceptions::CNullPointerException();
        }
    }

    // The number of delegates in the list.
    [[nodiscard]] int GetCount() const noexcept
    {
        int nCount = 0;
        for (const SEntry& entry : m_aEntries)
            nCount += entry.bRemoved ? 0 : 1;
        return nCount;
    }
    [[nodiscard]] bool IsEmpty() const noexcept { return GetCount() == 0; }

    CDelegateList1& operator+=(std::unique_ptr<DelegateType> pDelegate)
    {
        Add(std::move(pDelegate));
        return *this;
    }
    CDelegateList1& operator-=(const IComparableDelegate* pDelegate)
    {
        Remove(pDelegate);
        return *this;
    }
    R operator()(A arg) { return Invoke(static_cast<A>(arg)); }

private:
    struct SEntry
    {
        std::unique_ptr<DelegateType> pDelegate; // the owned delegate
        bool bRemoved;                           // removed during Invoke, destroyed after it
    };
    using CEntries = std::list<SEntry>;

    // Counts the Invoke calls in progress and destroys the removed entries when the last one ends.
    class CInvokeScope
    {
    public:
        explicit CInvokeScope(CDelegateList1& list) : m_list(list) { ++m_list.m_nInvokeDepth; }
        CInvokeScope(const CInvokeScope&) = delete;
        CInvokeScope& operator=(const CInvokeScope&) = delete;
        ~CInvokeScope()
        {
            if (--m_list.m_nInvokeDepth == 0 && m_list.m_bPendingRemovals)
            {
                m_list.m_aEntries.remove_if([](const SEntry& entry) { return entry.bRemoved; });
                m_list.m_bPendingRemovals = false;
            }
        }

    private:
        CDelegateList1& m_list;
    };

    typename CEntries::iterator Find(const IComparableDelegate* pDelegate)
    {
        for (auto it = m_aEntries.begin(); it != m_aEntries.end(); ++it)
            if (!it->bRemoved && it->pDelegate->IsEqual(pDelegate))
                return it;
        return m_aEntries.end();
    }

    CEntries m_aEntries;             // the delegates in order of adding
    int m_nInvokeDepth = 0;          // Invoke calls in progress
    bool m_bPendingRemovals = false; // entries wait to be destroyed after Invoke
};
} // namespace BCTL::Delegates
