#include "Host/HostLedger.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(HostLedgerTest, CountsByKind) {
    HostLedger ledger;
    EXPECT_EQ(0, ledger.total());
    EXPECT_EQ("", ledger.text());
    ledger.add("property map");
    ledger.add("controller");
    ledger.add("property map");
    EXPECT_EQ(3, ledger.total());
    EXPECT_EQ("1 controller, 2 property map", ledger.text());
    ledger.remove("controller");
    EXPECT_EQ("2 property map", ledger.text());
}

} // namespace
} // namespace varno
