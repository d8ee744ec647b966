// Memory of the editor: allocations that fail while it is created.
#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"
#include "Tests/Support/FailingCreation.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(EditorCreation, ThatFailsReturnsNullWithOneTraceLine) {
    expectCreationFails(DemoGain_GUI::Create, "DemoGain_GUI::Create", true);
}

TEST(EditorCreation, ThatFailsReturnsNullToAHostThatHasNoMemoryEither) {
    expectCreationFails(DemoGain_GUI::Create, "DemoGain_GUI::Create", false);
}

} // namespace
} // namespace varno::test
