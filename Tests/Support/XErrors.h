/// The errors that an X server sends to any of its clients.
#ifndef VARNO_TESTS_SUPPORT_XERRORS_H
#define VARNO_TESTS_SUPPORT_XERRORS_H

#include "Tests/Support/XClient.h"

#include <string>
#include <vector>
#include <xcb/record.h>

namespace varno::test {

/// Listens from its making on. A client that throws its errors away hides them from itself only.
class XErrors {
public:
    explicit XErrors(const std::string& display);
    XErrors(const XErrors&) = delete;
    XErrors& operator=(const XErrors&) = delete;

    /// Ends listening and tells each error so far as text: its code and the request that it answers.
    std::vector<std::string> finish();

private:
    XClient mControl;
    XClient mData;
    xcb_record_context_t mContext;
    xcb_record_enable_context_cookie_t mReplies;
};

} // namespace varno::test

#endif
