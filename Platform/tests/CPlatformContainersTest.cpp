// The growing array's growth rule, zeroed elements and checked indexes; the linked list; move-only
// elements in both; the owning array of pointers.
#include "Platform/CArray.h"
#include "Platform/CList.h"
#include "Platform/COwningPtrArray.h"
#include "Platform/CStringArray.h"

#include <climits>
#include <cppunit/extensions/HelperMacros.h>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace
{
// Writes its name into a shared journal when it dies, so tests see what was destroyed and when.
class CTracked
{
public:
    CTracked(std::string& csJournal, char chName) : m_csJournal(csJournal), m_chName(chName) {}
    CTracked(const CTracked&) = delete;
    CTracked& operator=(const CTracked&) = delete;
    ~CTracked() { m_csJournal += m_chName; }
    [[nodiscard]] char GetName() const noexcept { return m_chName; }

private:
    std::string& m_csJournal;
    char m_chName;
};

using CTrackedPtr = std::unique_ptr<CTracked>;

template <typename TContainer> std::string Names(const TContainer& c)
{
    std::string csNames;
    for (const auto& p : c)
        csNames += p ? p->GetName() : '-';
    return csNames;
}
} // namespace

class CPlatformContainersTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CPlatformContainersTest);
    CPPUNIT_TEST(ArrayGrowthTest);
    CPPUNIT_TEST(ArrayElementsTest);
    CPPUNIT_TEST(ListTest);
    CPPUNIT_TEST(MoveOnlyArrayTest);
    CPPUNIT_TEST(MoveOnlyListTest);
    CPPUNIT_TEST(OwningPtrArrayTest);
    CPPUNIT_TEST_SUITE_END();

public:
    void ArrayGrowthTest()
    {
        // One Add to an array of the given size: by the grow-by value if set, otherwise an eighth of
        // the size, at least 4 and at most 1024. SetSize itself allocates exactly.
        const std::tuple<int, int, int> aCases[] = {
            {0, -1, 4}, {4, -1, 8}, {80, -1, 90}, {16384, -1, 16384 + 1024}, {10, 3, 13}};
        for (const auto& [nSize, nGrowBy, nAlloc] : aCases)
        {
            CArray<int, int> a;
            a.SetSize(nSize, nGrowBy);
            CPPUNIT_ASSERT_EQUAL(nSize, a.GetAllocSize());
            a.Add(0);
            CPPUNIT_ASSERT_EQUAL(nAlloc, a.GetAllocSize());
            // A request larger than the step is met at once.
            a.SetSize(2 * nAlloc + 1);
            CPPUNIT_ASSERT(a.GetAllocSize() == 2 * nAlloc + 1);
            CPPUNIT_ASSERT(a.GetSize() == 2 * nAlloc + 1);
        }
    }

    void ArrayElementsTest()
    {
        // New elements are zero, also those SetAtGrow and InsertAt make.
        CArray<int, int> a;
        a.SetSize(3);
        a[0] = a[1] = a[2] = 7;
        a.SetSize(1);
        a.SetSize(3);
        CPPUNIT_ASSERT((Values(a) == std::vector<int>{7, 0, 0}));
        a.SetAtGrow(6, 9);
        CPPUNIT_ASSERT((Values(a) == std::vector<int>{7, 0, 0, 0, 0, 0, 9}));
        a.InsertAt(9, 5, 2);
        CPPUNIT_ASSERT((Values(a) == std::vector<int>{7, 0, 0, 0, 0, 0, 9, 0, 0, 5, 5}));
        CArray<void*, void*> aPointers;
        aPointers.SetSize(4);
        for (void* p : aPointers)
            CPPUNIT_ASSERT(p == nullptr);

        // Inserting an element of the array itself while it reallocates.
        CStringArray aStrings;
        aStrings.Add(u"first");
        aStrings.InsertAt(0, aStrings[0], 20);
        CPPUNIT_ASSERT_EQUAL(21, aStrings.GetSize());
        for (const CString& cs : aStrings)
            CPPUNIT_ASSERT(cs == u"first");

        // Indexes and ranges outside the array are refused and change nothing.
        CArray<int, int> b;
        CPPUNIT_ASSERT_THROW((void)b.GetAt(0), CInvalidArgException);
        for (int i = 0; i < 5; ++i)
            b.Add(i * 10);
        CPPUNIT_ASSERT_EQUAL(40, b.GetAt(4));
        CPPUNIT_ASSERT_THROW((void)b.GetAt(5), CInvalidArgException);
        CPPUNIT_ASSERT_THROW((void)b.GetAt(-1), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(b.SetAt(5, 0), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(b.SetSize(-1), CInvalidArgException);
        const std::pair<int, int> aBadRemoves[] = {{5, 1}, {3, 3}, {1, INT_MAX}, {-1, 1}};
        for (const auto& [nIndex, nCount] : aBadRemoves)
            CPPUNIT_ASSERT_THROW(b.RemoveAt(nIndex, nCount), CInvalidArgException);
        CPPUNIT_ASSERT_EQUAL(5, b.GetSize());
        b.RemoveAt(1, 2);
        b.RemoveAt(3, 0); // an empty range at the end is allowed
        CPPUNIT_ASSERT((Values(b) == std::vector<int>{0, 30, 40}));
    }

    void ListTest()
    {
        CList<int, int> list;
        CPPUNIT_ASSERT(list.GetHeadPosition() == nullptr);
        CPPUNIT_ASSERT_THROW(list.GetHead(), CInvalidArgException);
        list.AddTail(2);
        list.AddTail(3);
        list.AddHead(1);
        const POSITION posTwo = list.Find(2);
        list.InsertAfter(posTwo, 25);
        list.InsertBefore(list.GetHeadPosition(), 0);
        CPPUNIT_ASSERT((Forward(list) == std::vector<int>{0, 1, 2, 25, 3}));

        list.RemoveAt(posTwo);
        list.RemoveAt(list.GetTailPosition());
        std::vector<int> aBackward;
        for (POSITION pos = list.GetTailPosition(); pos;)
            aBackward.push_back(list.GetPrev(pos));
        CPPUNIT_ASSERT((aBackward == std::vector<int>{25, 1, 0}));
        CPPUNIT_ASSERT(list.Find(2) == nullptr);
        CPPUNIT_ASSERT(list.FindIndex(3) == nullptr);
        CPPUNIT_ASSERT_EQUAL(25, list.GetAt(list.FindIndex(2)));

        const CList<int, int> copy(list);
        CPPUNIT_ASSERT_EQUAL(0, list.RemoveHead());
        CPPUNIT_ASSERT_EQUAL(25, list.RemoveTail());
        CPPUNIT_ASSERT_EQUAL(1, list.RemoveTail());
        CPPUNIT_ASSERT(list.IsEmpty());
        CPPUNIT_ASSERT(list.GetHeadPosition() == nullptr);
        CPPUNIT_ASSERT(list.GetTailPosition() == nullptr);
        CPPUNIT_ASSERT((Forward(copy) == std::vector<int>{0, 1, 25}));
        list.AddTail(8); // usable again after being emptied
        CPPUNIT_ASSERT((Forward(list) == std::vector<int>{8}));
        CPPUNIT_ASSERT_EQUAL(8, list.GetTail());
    }

    void MoveOnlyArrayTest()
    {
        std::string csDied;
        CArray<CTrackedPtr> a;
        // Enough elements to grow several times: each growth moves them, none is lost or destroyed.
        for (char ch = 'a'; ch <= 'z'; ++ch)
            CPPUNIT_ASSERT_EQUAL(ch - 'a', a.Add(std::make_unique<CTracked>(csDied, ch)));
        CPPUNIT_ASSERT_EQUAL(std::string(), csDied);
        a.InsertAt(1, std::make_unique<CTracked>(csDied, 'A'));
        a.InsertAt(30, std::make_unique<CTracked>(csDied, 'Z')); // behind the end: nulls up to it
        CPPUNIT_ASSERT_EQUAL(std::string("aAbcdefghijklmnopqrstuvwxyz---Z"), Names(a));
        a.SetAt(0, std::make_unique<CTracked>(csDied, '0'));
        CPPUNIT_ASSERT_EQUAL(std::string("a"), csDied);
        a.SetAtGrow(32, std::make_unique<CTracked>(csDied, '!'));
        CPPUNIT_ASSERT_EQUAL(33, a.GetSize());
        CPPUNIT_ASSERT_EQUAL('!', a[32]->GetName());
        a.SetSize(2);
        CPPUNIT_ASSERT_EQUAL(std::string("abcdefghijklmnopqrstuvwxyzZ!"), csDied);
        a.RemoveAt(0);
        CPPUNIT_ASSERT_EQUAL(std::string("abcdefghijklmnopqrstuvwxyzZ!0"), csDied);

        // Adding an element of the array itself at the moment the array grows.
        CStringArray aStrings;
        aStrings.SetSize(4);
        aStrings[3] = u"last";
        CPPUNIT_ASSERT_EQUAL(4, aStrings.GetAllocSize());
        aStrings.Add(aStrings[3]);
        CPPUNIT_ASSERT(aStrings[4] == u"last");
        aStrings.SetAtGrow(9, aStrings[4]);
        CPPUNIT_ASSERT(aStrings[9] == u"last");
    }

    void MoveOnlyListTest()
    {
        std::string csDied;
        CList<CTrackedPtr> list;
        list.AddTail(std::make_unique<CTracked>(csDied, 'b'));
        list.AddHead(std::make_unique<CTracked>(csDied, 'a'));
        list.InsertAfter(list.GetHeadPosition(), std::make_unique<CTracked>(csDied, 'x'));
        list.InsertBefore(list.GetTailPosition(), std::make_unique<CTracked>(csDied, 'y'));
        std::string csOrder;
        for (POSITION pos = list.GetHeadPosition(); pos;)
            csOrder += list.GetNext(pos)->GetName();
        CPPUNIT_ASSERT_EQUAL(std::string("axyb"), csOrder);

        CTrackedPtr pHead = list.RemoveHead();
        CPPUNIT_ASSERT_EQUAL('a', pHead->GetName());
        CList<CTrackedPtr> moved(std::move(list));
        CPPUNIT_ASSERT_EQUAL(0, list.GetCount());
        CPPUNIT_ASSERT_EQUAL(3, moved.GetCount());
        moved.SetAt(moved.GetHeadPosition(), std::make_unique<CTracked>(csDied, 'X'));
        CPPUNIT_ASSERT_EQUAL(std::string("x"), csDied);
        moved.RemoveAt(moved.Find(moved.GetTail()));
        CPPUNIT_ASSERT_EQUAL(std::string("xb"), csDied);
        list = std::move(moved);
        CPPUNIT_ASSERT_EQUAL('y', list.GetTail()->GetName());
        list.RemoveAll();
        CPPUNIT_ASSERT_EQUAL(std::string("xbXy"), csDied);
    }

    void OwningPtrArrayTest()
    {
        std::string csDied;
        auto Make = [&](char ch) { return std::make_unique<CTracked>(csDied, ch); };
        COwningPtrArray<CTracked> a;
        CPPUNIT_ASSERT_THROW(a.Add(nullptr), CInvalidArgException);
        CPPUNIT_ASSERT_THROW(a.InsertAt(1, Make('?')), CInvalidArgException); // behind the end
        CPPUNIT_ASSERT_EQUAL(std::string("?"), csDied);
        for (char ch : std::string("acdef"))
            a.Add(Make(ch));
        a.InsertAt(1, Make('b'));
        CPPUNIT_ASSERT_EQUAL(std::string("abcdef"), Names(a));
        CPPUNIT_ASSERT_EQUAL('f', a[a.GetUpperBound()]->GetName());
        CPPUNIT_ASSERT_THROW((void)a.GetAt(6), CInvalidArgException);

        // Detach hands the element over alive; RemoveAt destroys, in order.
        CTrackedPtr pC = a.Detach(2);
        CPPUNIT_ASSERT_EQUAL(std::string("abdef"), Names(a));
        a.RemoveAt(1, 2);
        CPPUNIT_ASSERT_EQUAL(std::string("?bd"), csDied);
        CPPUNIT_ASSERT_THROW(a.RemoveAt(2, 2), CInvalidArgException);
        CArray<CTracked*, CTracked*> aPointers;
        a.CopyPointers(aPointers);
        CPPUNIT_ASSERT_EQUAL(3, aPointers.GetSize());
        CPPUNIT_ASSERT(aPointers[1] == a[1]);
        {
            COwningPtrArray<CTracked> b;
            for (char ch : std::string("123"))
                b.Add(Make(ch));
            b.RemoveFrom(3);
            b.RemoveFrom(2);
        }
        CPPUNIT_ASSERT_EQUAL(std::string("?bd312"), csDied);
        a.RemoveAll();
        CPPUNIT_ASSERT_EQUAL(std::string("?bd312aef"), csDied);
        CPPUNIT_ASSERT(a.IsEmpty());
        CPPUNIT_ASSERT_EQUAL('c', pC->GetName());
    }

private:
    static std::vector<int> Values(const CArray<int, int>& a) { return std::vector<int>(a.begin(), a.end()); }

    static std::vector<int> Forward(const CList<int, int>& list)
    {
        std::vector<int> aValues;
        for (POSITION pos = list.GetHeadPosition(); pos;)
            aValues.push_back(list.GetNext(pos));
        return aValues;
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CPlatformContainersTest, "All Tests");
