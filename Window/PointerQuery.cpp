#include "Window/PointerQuery.h"

#include "Window/PointerEvents.h"

namespace varno {
namespace {

constexpr int kFirstButtonBit = 8; // of a pointer's mask
constexpr unsigned kButtons = 0x1F;

} // namespace

PointerQuery::PointerQuery(XConnection& connection, xcb_window_t window)
    : mConnection(connection),
      mWindow(window),
      mParent(connection.screen().root) {
}

PointerQuery::~PointerQuery() {
    discard();
}

// The pointer is in the window, or in one within, where the window is the child of its parent that has it.
PointerQuery::Question PointerQuery::send() const {
    auto* const connection = mConnection.get();
    return {xcb_query_tree(connection, mWindow), xcb_query_pointer(connection, mWindow),
            xcb_query_pointer(connection, mParent)};
}

void PointerQuery::discard() {
    if (mQuestion) {
        for (const auto sequence :
             {mQuestion->parent.sequence, mQuestion->inside.sequence, mQuestion->above.sequence}) {
            xcb_discard_reply(mConnection.get(), sequence);
        }
        mQuestion.reset();
    }
}

std::optional<PointerState> PointerQuery::evaluate(const xcb_query_tree_reply_t* tree,
                                                   const xcb_query_pointer_reply_t* inside,
                                                   const xcb_query_pointer_reply_t* above) {
    mIsParentNew = tree != nullptr && tree->parent != mParent;
    if (mIsParentNew) {
        mParent = tree->parent;
    }
    if (mIsParentNew || tree == nullptr || inside == nullptr || above == nullptr ||
        inside->same_screen == 0) {
        return {};
    }
    return PointerState{{inside->win_x, inside->win_y},
                        {inside->root_x, inside->root_y},
                        above->child == mWindow,
                        heldModifiers(inside->mask),
                        inside->mask >> kFirstButtonBit & kButtons};
}

std::optional<PointerState> PointerQuery::now() {
    std::optional<PointerState> state;
    auto* const connection = mConnection.get();
    constexpr int kMostQuestions = 2;
    for (int i = 0; i < kMostQuestions && (i == 0 || mIsParentNew); ++i) {
        const Question question = send();
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection, question.parent, nullptr));
        const XReply<xcb_query_pointer_reply_t> inside(
            xcb_query_pointer_reply(connection, question.inside, nullptr));
        const XReply<xcb_query_pointer_reply_t> above(
            xcb_query_pointer_reply(connection, question.above, nullptr));
        state = evaluate(tree.get(), inside.get(), above.get());
    }
    return state;
}

void PointerQuery::ask() {
    if (!mQuestion) {
        mQuestion = send();
        mConnection.flush();
    }
}

std::optional<PointerState> PointerQuery::answer() {
    if (!mQuestion) {
        return {};
    }
    XReply<xcb_query_pointer_reply_t> above;
    if (!mConnection.pollReply(mQuestion->above.sequence, above)) {
        return {};
    }
    // The answers before have arrived before.
    XReply<xcb_query_tree_reply_t> tree;
    XReply<xcb_query_pointer_reply_t> inside;
    mConnection.pollReply(mQuestion->parent.sequence, tree);
    mConnection.pollReply(mQuestion->inside.sequence, inside);
    mQuestion.reset();
    return evaluate(tree.get(), inside.get(), above.get());
}

} // namespace varno
