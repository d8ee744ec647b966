#include "ACF/ACFDelegating.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/SingleStep.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace varno {
namespace {

constexpr acfIID kComponentIID = {
    0x0C4E77B5, 0x51D7, 0x4E0C, {0x92, 0x4A, 0x66, 0x5B, 0x3B, 0x0F, 0x3E, 0x11}};

class ComponentInterface : public IACFUnknown {
public:
    virtual int answer() const = 0;

protected:
    ~ComponentInterface() = default;
};

// Records what happens at its end.
class Component : public ACFDelegating<ComponentInterface> {
public:
    explicit Component(std::vector<std::string>& log, IACFUnknown* outer = nullptr)
        : ACFDelegating(outer),
          mLog(log) {}
    ~Component() override { mLog.emplace_back("destroyed"); }

    int answer() const override { return 42; }
    ACFRESULT InternalQueryInterface(const acfIID& iid, void** outObject) override {
        return AnswerInterface(kComponentIID, iid, outObject);
    }
    void FinalRelease() override {
        mLog.emplace_back("final release");
        if (mReferencesItselfAtTheEnd) {
            AddRef();
            Release();
        }
    }

    bool mReferencesItselfAtTheEnd = false;

private:
    std::vector<std::string>& mLog;
};

// The controlling unknown of an aggregate; counts its calls.
class Outer : public IACFUnknown {
public:
    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        queried = iid;
        *outObject = this;
        return 7;
    }
    std::uint32_t AddRef() override { return ++references; }
    std::uint32_t Release() override { return --references; }

    acfIID queried{};
    std::uint32_t references = 10;
};

class CACFUnknownTest : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), mAliveBefore); }

    std::vector<std::string> mLog;
    const std::int32_t mAliveBefore = CACFUnknown::GetActiveObjectCount();
};

TEST_F(CACFUnknownTest, CountsReferencesFromZero) {
    auto* component = new Component(mLog);
    EXPECT_EQ(component->AddRef(), 1U);
    EXPECT_EQ(component->AddRef(), 2U);
    EXPECT_EQ(component->Release(), 1U);
    EXPECT_TRUE(mLog.empty());
    EXPECT_EQ(component->Release(), 0U);
}

TEST_F(CACFUnknownTest, LastReleaseCallsFinalReleaseOnceBeforeDestruction) {
    auto* component = new Component(mLog);
    component->AddRef();
    component->Release();
    EXPECT_EQ(mLog, (std::vector<std::string>{"final release", "destroyed"}));
}

TEST_F(CACFUnknownTest, ReferencesTakenInFinalReleaseDoNotDestroyTwice) {
    auto* component = new Component(mLog);
    component->mReferencesItselfAtTheEnd = true;
    component->AddRef();
    EXPECT_EQ(component->Release(), 0U);
    EXPECT_EQ(mLog, (std::vector<std::string>{"final release", "destroyed"}));
}

TEST_F(CACFUnknownTest, QueryForUnknownAddsOneReferenceAndAnswersWithInnerUnknown) {
    auto* component = new Component(mLog);
    component->AddRef();
    void* answer = nullptr;
    EXPECT_EQ(component->QueryInterface(IID_IACFUnknown, &answer), ACF_OK);
    auto* unknown = static_cast<IACFUnknown*>(answer);
    ASSERT_NE(unknown, nullptr);
    EXPECT_NE(answer, static_cast<void*>(static_cast<IACFUnknown*>(component)));
    EXPECT_EQ(component->AddRef(), 3U);
    EXPECT_EQ(unknown->Release(), 2U);
    EXPECT_EQ(unknown->Release(), 1U);
    EXPECT_EQ(unknown->Release(), 0U);
}

TEST_F(CACFUnknownTest, QueryForOwnInterfaceAnswersWithTheObject) {
    auto* component = new Component(mLog);
    component->AddRef();
    void* answer = nullptr;
    EXPECT_EQ(component->QueryInterface(kComponentIID, &answer), ACF_OK);
    ASSERT_EQ(answer, static_cast<void*>(static_cast<ComponentInterface*>(component)));
    EXPECT_EQ(static_cast<ComponentInterface*>(answer)->answer(), 42);
    EXPECT_EQ(component->Release(), 1U);
    component->Release();
}

TEST_F(CACFUnknownTest, QueryForAnythingElseReturnsNoSuchInterfaceAndNull) {
    auto* component = new Component(mLog);
    component->AddRef();
    std::vector<acfIID> others{IID_IACFPluginDefinition, IID_IACFUnknown, IID_IACFUnknown, IID_IACFUnknown};
    others[1].Data1 = 1;
    others[2].Data3 = 1;
    others[3].Data4[7] = 0x47;
    for (const acfIID& iid : others) {
        void* answer = component;
        EXPECT_EQ(static_cast<std::uint32_t>(component->QueryInterface(iid, &answer)), 0x80000004U);
        EXPECT_EQ(answer, nullptr);
    }
    EXPECT_EQ(component->Release(), 0U);
}

TEST_F(CACFUnknownTest, LiveObjectsAreCounted) {
    auto* first = new Component(mLog);
    auto* second = new Component(mLog);
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), mAliveBefore + 2);
    first->AddRef();
    second->AddRef();
    first->Release();
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), mAliveBefore + 1);
    second->Release();
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), mAliveBefore);
}

TEST_F(CACFUnknownTest, AggregatedObjectDelegatesToTheControllingUnknown) {
    Outer outer;
    auto* component = new Component(mLog, &outer);
    EXPECT_EQ(outer.references, 10U);
    EXPECT_EQ(component->AddRef(), 11U);
    EXPECT_EQ(component->Release(), 10U);
    void* answer = nullptr;
    EXPECT_EQ(component->QueryInterface(kComponentIID, &answer), 7);
    EXPECT_EQ(answer, static_cast<void*>(&outer));
    EXPECT_TRUE(outer.queried == kComponentIID);
    component->InternalAddRef();
    component->InternalRelease();
    EXPECT_EQ(outer.references, 10U);
}

TEST_F(CACFUnknownTest, InnerUnknownOfAnAggregatedObjectAnswersForTheObjectAlone) {
    Outer outer;
    auto* component = new Component(mLog, &outer);
    void* inner = nullptr;
    EXPECT_EQ(component->InternalQueryInterface(IID_IACFUnknown, &inner), ACF_OK);
    void* answer = nullptr;
    EXPECT_EQ(static_cast<IACFUnknown*>(inner)->QueryInterface(kComponentIID, &answer), ACF_OK);
    EXPECT_EQ(answer, static_cast<void*>(static_cast<ComponentInterface*>(component)));
    // The interface counts at the controlling unknown, the inner unknown at the object.
    EXPECT_EQ(outer.references, 11U);
    EXPECT_EQ(component->Release(), 10U);
    EXPECT_EQ(static_cast<IACFUnknown*>(inner)->Release(), 0U);
    EXPECT_EQ(mLog.back(), "destroyed");
}

TEST_F(CACFUnknownTest, BaseOperationsDoNothing) {
    auto* plain = new CACFUnknown;
    EXPECT_EQ(plain->InitializeInstance(nullptr), 0);
    plain->FinalRelease();
    EXPECT_EQ(plain->InternalAddRef(), 1U);
    EXPECT_EQ(plain->InternalRelease(), 0U);
}

TEST_F(CACFUnknownTest, VirtualSlotsHaveTheirOrder) {
    EXPECT_EQ(slotOf(&CACFUnknown::InitializeInstance), kDestructorSlots);
    EXPECT_EQ(slotOf(&CACFUnknown::FinalRelease), kDestructorSlots + 1);
    EXPECT_EQ(slotOf(&CACFUnknown::ReclaimMemory), kDestructorSlots + 2);
    EXPECT_EQ(slotOf(&CACFUnknown::InternalQueryInterface), kDestructorSlots + 3);
    EXPECT_EQ(slotOf(&CACFUnknown::InternalAddRef), kDestructorSlots + 4);
    EXPECT_EQ(slotOf(&CACFUnknown::InternalRelease), kDestructorSlots + 5);
    EXPECT_EQ(slotOf(&IACFUnknown::QueryInterface), 0);
    EXPECT_EQ(slotOf(&IACFUnknown::AddRef), 1);
    EXPECT_EQ(slotOf(&IACFUnknown::Release), 2);
}

// The words of an object's memory behind the pointer to its virtual table.
TEST_F(CACFUnknownTest, MembersAreCountThenControllingUnknownThenInnerUnknown) {
    Outer outer;
    for (IACFUnknown* given : {static_cast<IACFUnknown*>(nullptr), static_cast<IACFUnknown*>(&outer)}) {
        auto* plain = new CACFUnknown(given);
        plain->InternalAddRef();
        void* inner = nullptr;
        plain->InternalQueryInterface(IID_IACFUnknown, &inner);

        struct {
            void* table;
            std::uint32_t count;
            void* controlling;
            struct {
                void* table;
                void* owner;
            } inner;
        } image;
        static_assert(sizeof(image) == sizeof(CACFUnknown));
        std::memcpy(&image, static_cast<void*>(plain), sizeof(image));
        EXPECT_EQ(image.count, 2U);
        EXPECT_EQ(image.controlling, given != nullptr ? static_cast<void*>(given) : inner);
        EXPECT_EQ(image.inner.owner, static_cast<void*>(plain));
        EXPECT_EQ(static_cast<std::byte*>(inner),
                  reinterpret_cast<std::byte*>(plain) + offsetof(decltype(image), inner));

        plain->InternalRelease();
        plain->InternalRelease();
    }
}

#if VARNO_HAS_SINGLE_STEP

// A count of two accesses, a load and a store, would lose what comes in between.
TEST_F(CACFUnknownTest, CountsReferencesOfSeveralThreadsInOneOperation) {
    auto* component = new Component(mLog);
    component->AddRef();
    const auto add = [component] { component->InternalAddRef(); };
    const auto release = [component] { component->InternalRelease(); };
    const auto expectThree = [&] {
        EXPECT_EQ(component->AddRef(), 4U);
        release();
        release();
        release();
    };
    EXPECT_GT(test::callAtEachInstruction(
                  add, add, [] {}, expectThree),
              1);
    release(); // of the last time, when nothing came in between
    const auto addTwo = [&] {
        add();
        add();
    };
    EXPECT_GT(test::callAtEachInstruction(release, release, addTwo,
                                          [&] {
                                              EXPECT_EQ(component->AddRef(), 2U);
                                              release();
                                          }),
              1);
    release();
    EXPECT_EQ(component->Release(), 0U);
    EXPECT_EQ(mLog, (std::vector<std::string>{"final release", "destroyed"}));
}

TEST_F(CACFUnknownTest, CountsLiveObjectsOfSeveralThreadsInOneOperation) {
    struct Place {
        CACFUnknown* object = nullptr;
        alignas(CACFUnknown) std::byte bytes[sizeof(CACFUnknown)];
        void make() { object = new (bytes) CACFUnknown; }
        void end() { object->~CACFUnknown(); }
    };
    Place first;
    Place second;
    const auto alive = [this] { return CACFUnknown::GetActiveObjectCount() - mAliveBefore; };
    EXPECT_GT(test::callAtEachInstruction([&] { first.make(); }, [&] { second.make(); }, [] {},
                                          [&] {
                                              EXPECT_EQ(alive(), 2);
                                              first.end();
                                              second.end();
                                          }),
              1);
    first.end();
    EXPECT_GT(test::callAtEachInstruction([&] { first.end(); }, [&] { second.end(); },
                                          [&] {
                                              first.make();
                                              second.make();
                                          },
                                          [&] { EXPECT_EQ(alive(), 0); }),
              1);
    second.end();
}

#endif

} // namespace
} // namespace varno
