#include "AAX_CPacketHandler.h"
#include "AAX_CPacket.h"
#include "Tests/Support/ForwardingCheck.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace varno {
namespace {

// Records how it is called.
struct Target {
    AAX_Result takePacket(AAX_CPacket& packet) {
        mCalls += "packet " + std::to_string(packet.GetFieldIndex()) + ";";
        return AAX_ERROR_FIFO_FULL;
    }
    AAX_Result takeBoth(AAX_CParamID paramID, AAX_CPacket& packet) {
        mCalls += std::string(paramID) + " " + std::to_string(packet.GetFieldIndex()) + ";";
        return AAX_SUCCESS;
    }
    std::string mCalls;
};

using Handler = AAX_CPacketHandler<Target>;

TEST(PacketHandler, CallsItsMember) {
    Target target;
    AAX_CPacket packet(3);
    EXPECT_EQ(Handler(&target, &Target::takePacket).Call("Gain", packet), AAX_ERROR_FIFO_FULL);
    EXPECT_EQ(Handler(&target, &Target::takeBoth).Call("Gain", packet), AAX_SUCCESS);
    EXPECT_EQ(target.mCalls, "packet 3;Gain 3;");
}

TEST(PacketHandler, AnswersNullObjectWithoutMemberOrObject) {
    Target target;
    AAX_CPacket packet(3);
    EXPECT_EQ(Handler(&target, Handler::PacketMember(nullptr)).Call("Gain", packet), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(Handler(&target, Handler::ParamPacketMember(nullptr)).Call("Gain", packet),
              AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(Handler(nullptr, &Target::takePacket).Call("Gain", packet), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(Handler(nullptr, &Target::takeBoth).Call("Gain", packet), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(target.mCalls, "");
}

TEST(PacketHandler, ClonesObjectAndMember) {
    Target target;
    AAX_CPacket packet(5);
    std::unique_ptr<AAX_IPacketHandler> clone;
    {
        const Handler handler(&target, &Target::takeBoth);
        clone = handler.Clone();
    }
    EXPECT_EQ(clone->Call("Mix", packet), AAX_SUCCESS);
    EXPECT_EQ(target.mCalls, "Mix 5;");
}

TEST(PacketHandler, DeclaresItsOperationsInOrder) {
    EXPECT_EQ(slotOf(&AAX_IPacketHandler::Clone), kDestructorSlots);
    EXPECT_EQ(slotOf(&AAX_IPacketHandler::Call), kDestructorSlots + 1);
}

} // namespace
} // namespace varno
