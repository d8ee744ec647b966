#include "TerminalKeys.h"

#include <gmock/gmock.h>
#include <vector>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<LiveAction> actionsOf(TerminalKeys& keys, std::string_view bytes) {
    keys.add(bytes);
    std::vector<LiveAction> actions;
    while (const auto action = keys.next()) {
        actions.push_back(*action);
    }
    return actions;
}

std::vector<LiveAction> actionsOf(std::string_view bytes) {
    TerminalKeys keys;
    return actionsOf(keys, bytes);
}

TEST(TerminalKeys, SingleLetters) {
    EXPECT_THAT(actionsOf("qbds?"), ElementsAre(LiveAction::kQuit, LiveAction::kBypass, LiveAction::kDefault,
                                                LiveAction::kSave, LiveAction::kHelp));
    EXPECT_THAT(actionsOf("kj-+="), ElementsAre(LiveAction::kPrevious, LiveAction::kNext, LiveAction::kDown,
                                                LiveAction::kUp, LiveAction::kUp));
    EXPECT_THAT(actionsOf("\x04"), ElementsAre(LiveAction::kQuit));
}

TEST(TerminalKeys, ArrowsAsEitherKindOfTerminalSendsThem) {
    for (const char* const arrows : {"\x1b[A\x1b[B\x1b[C\x1b[D", "\x1bOA\x1bOB\x1bOC\x1bOD"}) {
        EXPECT_THAT(actionsOf(arrows), ElementsAre(LiveAction::kPrevious, LiveAction::kNext, LiveAction::kUp,
                                                   LiveAction::kDown));
    }
    EXPECT_THAT(actionsOf("\x1b[5~\x1b[6~"), ElementsAre(LiveAction::kFarUp, LiveAction::kFarDown));
}

TEST(TerminalKeys, ASequenceMayComeInParts) {
    TerminalKeys keys;
    EXPECT_THAT(actionsOf(keys, "\x1b"), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "["), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "A"), ElementsAre(LiveAction::kPrevious));
    EXPECT_THAT(actionsOf(keys, "\x1b[6"), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "~q"), ElementsAre(LiveAction::kFarDown, LiveAction::kQuit));
}

TEST(TerminalKeys, OthersDoNothing) {
    EXPECT_THAT(actionsOf("xyz\n\x1b[H\x1b[1;5C\x1b[15~ü"), IsEmpty());
    EXPECT_THAT(actionsOf("\x1bq"), ElementsAre(LiveAction::kQuit)); // Alt-Q, or Escape and then Q
}

TEST(TerminalKeys, TheHelpNamesThem) {
    for (const char* part :
         {"q  ", "b  ", "up, down  ", "left, right  ", "page down, up  ", "d  ", "s  ", "?  "}) {
        EXPECT_THAT(terminalKeysHelp(), HasSubstr(part));
    }
}

} // namespace
} // namespace varno
