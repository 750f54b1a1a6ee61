// Multicast delegates: adding and removing by value, invocation order, failures.
#include "Common_h/BCTL/CDelegateList1.h"
#include "Common_h/BCTL/CMethodDelegate1.h"
#include "Common_h/BCTL/CStaticDelegate1.h"

#include <cppunit/extensions/HelperMacros.h>
#include <memory>
#include <vector>

using namespace BCTL::Delegates;
using BCTL::Exceptions::CNullPointerException;

namespace
{
std::vector<int> s_aCalls; // the order of calls across static functions and methods

void Record(int nValue)
{
    s_aCalls.push_back(nValue);
}

void Throw(int nValue)
{
    throw nValue;
}

int Twice(int nValue)
{
    return 2 * nValue;
}
} // namespace

class CDelegatesTest : public CppUnit::TestFixture
{
    CPPUNIT_TEST_SUITE(CDelegatesTest);
    CPPUNIT_TEST(CAddMethodDelegateSuccess);
    CPPUNIT_TEST(CAddMethodDelegateFailure);
    CPPUNIT_TEST(CRemoveMethodDelegateSuccess);
    CPPUNIT_TEST(CRemoveMethodDelegateFailure);
    CPPUNIT_TEST(EmptyDelegateSuccess);
    CPPUNIT_TEST(EqDelegateSuccess);
    CPPUNIT_TEST(StaticDelegateSuccess);
    CPPUNIT_TEST(StaticDelegateAndMethodDelegate);
    CPPUNIT_TEST(RemoveDuringInvokeTest);
    CPPUNIT_TEST_SUITE_END();

    using CIntList = CDelegateList1<void, int>;
    using CIntResults = CDelegateList1<int, int>;
    using CIntFunction = CStaticDelegate1<int, int>;
    using CMethod = CMethodDelegate1<CDelegatesTest, void, int>;

    int m_nSum1 = 0;
    int m_nSum2 = 0;
    CIntList* m_pList = nullptr;

    void Add1(int) { ++m_nSum1; }
    void Add2(int) { ++m_nSum2; }
    void RecordTenfold(int nValue) { s_aCalls.push_back(10 * nValue); }
    void RemoveSelf(int nValue)
    {
        s_aCalls.push_back(nValue);
        const CMethod self(this, &CDelegatesTest::RemoveSelf);
        m_pList->Remove(&self);
    }

    std::unique_ptr<CMethod> Method(void (CDelegatesTest::*pMethod)(int))
    {
        return std::make_unique<CMethod>(this, pMethod);
    }

public:
    void setUp() override
    {
        m_nSum1 = m_nSum2 = 0;
        s_aCalls.clear();
    }

    void CAddMethodDelegateSuccess()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(1, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(0, m_nSum2);
        list += Method(&CDelegatesTest::Add2);
        list(0);
        CPPUNIT_ASSERT_EQUAL(2, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(1, m_nSum2);
    }

    void CAddMethodDelegateFailure()
    {
        CIntList list;
        CPPUNIT_ASSERT_THROW(list.Add(nullptr), CNullPointerException);
        CPPUNIT_ASSERT_THROW(CMethod(nullptr, &CDelegatesTest::Add1), CNullPointerException);
        CPPUNIT_ASSERT_THROW(CMethod(this, nullptr), CNullPointerException);
        CPPUNIT_ASSERT(list.IsEmpty());
    }

    void CRemoveMethodDelegateSuccess()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        list.Add(Method(&CDelegatesTest::Add2));
        list.Invoke(0);
        const CMethod first(this, &CDelegatesTest::Add1);
        list.Remove(&first);
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(1, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(2, m_nSum2);
        list -= Method(&CDelegatesTest::Add2).get();
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(2, m_nSum2);
        CPPUNIT_ASSERT(list.IsEmpty());
    }

    void CRemoveMethodDelegateFailure()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        CPPUNIT_ASSERT_THROW(list.Remove(nullptr), CNullPointerException);
        // Not in the list: another method, the same method on another object, a static function.
        CDelegatesTest other;
        const CMethod otherObject(&other, &CDelegatesTest::Add1);
        const CStaticDelegate1<void, int> function(&Record);
        list.Remove(Method(&CDelegatesTest::Add2).get());
        list.Remove(&otherObject);
        list.Remove(&function);
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(1, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(1, list.GetCount());
    }

    void EmptyDelegateSuccess()
    {
        CIntList list;
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(0, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(0, m_nSum2);
        CPPUNIT_ASSERT_EQUAL(0, CIntResults().Invoke(3));
    }

    void EqDelegateSuccess()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        list.Add(Method(&CDelegatesTest::Add1));
        CPPUNIT_ASSERT_EQUAL(1, list.GetCount());
        list.Invoke(0);
        CPPUNIT_ASSERT_EQUAL(1, m_nSum1);

        const CMethod a(this, &CDelegatesTest::Add1);
        const CStaticDelegate1<void, int> f(&Record);
        CPPUNIT_ASSERT(a.IsEqual(Method(&CDelegatesTest::Add1).get()));
        CPPUNIT_ASSERT(!a.IsEqual(&f) && !f.IsEqual(&a) && !a.IsEqual(nullptr));
        CPPUNIT_ASSERT(f.IsEqual(std::make_unique<CStaticDelegate1<void, int>>(&Record).get()));
        CPPUNIT_ASSERT(!f.IsEqual(std::make_unique<CStaticDelegate1<void, int>>(&Throw).get()));
    }

    void StaticDelegateSuccess()
    {
        CIntList list;
        list.Add(std::make_unique<CStaticDelegate1<void, int>>(&Record));
        list.Add(std::make_unique<CStaticDelegate1<void, int>>(&Throw));
        list.Add(Method(&CDelegatesTest::Add1));
        try
        {
            list.Invoke(5);
            CPPUNIT_FAIL("the exception of the delegate was lost");
        }
        catch (int nThrown)
        {
            CPPUNIT_ASSERT_EQUAL(5, nThrown);
        }
        // The delegate behind the failing one wasn't called, and the list is as it was.
        CPPUNIT_ASSERT((s_aCalls == std::vector<int>{5}));
        CPPUNIT_ASSERT_EQUAL(0, m_nSum1);
        CPPUNIT_ASSERT_EQUAL(3, list.GetCount());

        // The result is the last delegate's.
        CIntResults results;
        results.Add(std::make_unique<CIntFunction>(&Twice));
        CPPUNIT_ASSERT_EQUAL(14, results.Invoke(7));
        CPPUNIT_ASSERT_THROW(CIntFunction(nullptr), CNullPointerException);
    }

    void StaticDelegateAndMethodDelegate()
    {
        CIntList list;
        list.Add(std::make_unique<CStaticDelegate1<void, int>>(&Record));
        list.Add(Method(&CDelegatesTest::RecordTenfold));
        list.Invoke(1);
        CIntList reversed;
        reversed.Add(Method(&CDelegatesTest::RecordTenfold));
        reversed.Add(std::make_unique<CStaticDelegate1<void, int>>(&Record));
        reversed.Invoke(2);
        CPPUNIT_ASSERT((s_aCalls == std::vector<int>{1, 10, 20, 2}));
    }

    // A delegate may remove itself, or others, while the list runs it.
    void RemoveDuringInvokeTest()
    {
        CIntList list;
        m_pList = &list;
        list.Add(Method(&CDelegatesTest::RemoveSelf));
        list.Add(std::make_unique<CStaticDelegate1<void, int>>(&Record));
        list.Invoke(1);
        CPPUNIT_ASSERT_EQUAL(1, list.GetCount());
        list.Invoke(2);
        CPPUNIT_ASSERT((s_aCalls == std::vector<int>{1, 1, 2}));
        // Added again after its removal, it is called again.
        list.Add(Method(&CDelegatesTest::RemoveSelf));
        list.Invoke(3);
        CPPUNIT_ASSERT((s_aCalls == std::vector<int>{1, 1, 2, 3, 3}));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CDelegatesTest, "All Tests");
