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
    CPPUNIT_TEST_SUITE_END();

    using CIntList = CDelegateList1<void, int>;
    using CFunction = CStaticDelegate1<void, int>;
    using CMethod = CMethodDelegate1<CDelegatesTest, void, int>;
    using V = std::vector<int>;

    CIntList* m_pList = nullptr;

    static void Record(int nValue) { s_aCalls.push_back(nValue); }
    static void Throw(int nValue) { throw nValue; }
    static int Twice(int nValue) { return 2 * nValue; }

    void Add1(int) { s_aCalls.push_back(1); }
    void Add2(int) { s_aCalls.push_back(2); }
    void RecordTenfold(int nValue) { s_aCalls.push_back(10 * nValue); }
    void RemoveSelf(int nValue)
    {
        s_aCalls.push_back(nValue);
        const CMethod self(this, &CDelegatesTest::RemoveSelf);
        m_pList->Remove(&self);
    }

    std::unique_ptr<CMethod> Method(void (CDelegatesTest::*p)(int))
    {
        return std::make_unique<CMethod>(this, p);
    }

    // Invokes the list and gives the calls it made.
    static std::vector<int> Calls(CIntList& list, int nValue = 0)
    {
        s_aCalls.clear();
        list.Invoke(nValue);
        return s_aCalls;
    }

public:
    void setUp() override { s_aCalls.clear(); }

    void CAddMethodDelegateSuccess()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        CPPUNIT_ASSERT((Calls(list) == V{1}));
        list += Method(&CDelegatesTest::Add2);
        list(0);
        CPPUNIT_ASSERT((s_aCalls == V{1, 1, 2}));
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
        const CMethod first(this, &CDelegatesTest::Add1);
        list.Remove(&first);
        CPPUNIT_ASSERT((Calls(list) == V{2}));
        list -= Method(&CDelegatesTest::Add2).get();
        CPPUNIT_ASSERT(Calls(list).empty());
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
        const CFunction function(&Record);
        list.Remove(Method(&CDelegatesTest::Add2).get());
        list.Remove(&otherObject);
        list.Remove(&function);
        CPPUNIT_ASSERT((Calls(list) == V{1}));
    }

    void EmptyDelegateSuccess()
    {
        CIntList list;
        CPPUNIT_ASSERT(Calls(list).empty());
        CPPUNIT_ASSERT_EQUAL(0, (CDelegateList1<int, int>().Invoke(3)));
    }

    void EqDelegateSuccess()
    {
        CIntList list;
        list.Add(Method(&CDelegatesTest::Add1));
        list.Add(Method(&CDelegatesTest::Add1));
        CPPUNIT_ASSERT((Calls(list) == V{1}));

        const CMethod a(this, &CDelegatesTest::Add1);
        const CFunction f(&Record);
        CPPUNIT_ASSERT(a.IsEqual(Method(&CDelegatesTest::Add1).get()));
        CPPUNIT_ASSERT(!a.IsEqual(&f));
        CPPUNIT_ASSERT(!f.IsEqual(&a));
        CPPUNIT_ASSERT(!a.IsEqual(nullptr));
        CPPUNIT_ASSERT(f.IsEqual(std::make_unique<CFunction>(&Record).get()));
        CPPUNIT_ASSERT(!f.IsEqual(std::make_unique<CFunction>(&Throw).get()));
    }

    void StaticDelegateSuccess()
    {
        CIntList list;
        list.Add(std::make_unique<CFunction>(&Record));
        list.Add(std::make_unique<CFunction>(&Throw));
        list.Add(Method(&CDelegatesTest::Add1));
        // The exception comes through; the delegate behind it isn't called; the list stays.
        CPPUNIT_ASSERT_THROW(list.Invoke(5), int);
        CPPUNIT_ASSERT((s_aCalls == V{5}));
        CPPUNIT_ASSERT_EQUAL(3, list.GetCount());

        // The result is the last delegate's.
        CDelegateList1<int, int> results;
        results.Add(std::make_unique<CStaticDelegate1<int, int>>(&Twice));
        CPPUNIT_ASSERT_EQUAL(14, results.Invoke(7));
        CPPUNIT_ASSERT_THROW((CStaticDelegate1<int, int>(nullptr)), CNullPointerException);
    }

    void StaticDelegateAndMethodDelegate()
    {
        // Called in the order of adding, whatever their kind.
        CIntList list;
        list.Add(Method(&CDelegatesTest::RecordTenfold));
        list.Add(std::make_unique<CFunction>(&Record));
        list.Add(Method(&CDelegatesTest::Add2));
        CPPUNIT_ASSERT((Calls(list, 3) == V{30, 3, 2}));

        // A delegate may remove itself while the list runs it; added again, it is called again.
        CIntList removing;
        m_pList = &removing;
        removing.Add(Method(&CDelegatesTest::RemoveSelf));
        removing.Add(std::make_unique<CFunction>(&Record));
        CPPUNIT_ASSERT((Calls(removing, 1) == V{1, 1}));
        CPPUNIT_ASSERT((Calls(removing, 2) == V{2}));
        removing.Add(Method(&CDelegatesTest::RemoveSelf));
        CPPUNIT_ASSERT((Calls(removing, 3) == V{3, 3}));
    }
};

CPPUNIT_TEST_SUITE_NAMED_REGISTRATION(CDelegatesTest, "All Tests");
