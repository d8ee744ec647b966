/// A host's window with the editor of an instance in it.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_EDITORWINDOW_H
#define VARNO_TESTS_INTEGRATION_EDITOR_EDITORWINDOW_H

#include "ACF/ACFPtr.h"
#include "DemoGain_ViewLayout.h"
#include "Host/Editor.h"
#include "Host/Instance.h"
#include "Tests/Integration/Editor/HostLoop.h"
#include "Tests/Support/Picture.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// The row of the layout's table for a control. Throws std::invalid_argument where there is none.
const DemoGain_ViewLayout::Control& controlOf(const std::string& id);
/// Where a control lies in the editor.
Area areaOf(const DemoGain_ViewLayout::Control& control);
Area areaOf(const std::string& id);
/// The whole editor, and its line of text.
Area viewArea();
Area statusArea();

/// What an editor is opened with.
struct EditorSurroundings {
    const XClient& client;
    HostLoop& loop;
    bool withDesktop = true; ///< Whether the editor may use the host's event loop.
};

/// Open from its construction until it is closed; each turn of the loop calls the editor's timer and the
/// instance's idle. The instance may end before it.
class EditorWindow {
public:
    /// Throws HostError where the instance has no editor to open.
    EditorWindow(const EditorSurroundings& surroundings, Instance& instance, Place onScreen = {});
    EditorWindow(const EditorWindow&) = delete;
    EditorWindow& operator=(const EditorWindow&) = delete;
    ~EditorWindow() { close(); }

    /// Ends the editor, then the window.
    void close();
    /// Ends the window under the editor.
    void destroyWindow() { mWindow.destroy(); }
    /// The instance is about to end: it is not called any more.
    void loseInstance() { mInstance = nullptr; }

    /// Answers the editor's mouse offers; without it none is taken.
    void answerOffers(ViewContainer::MouseHandler answer) { mAnswer = std::move(answer); }
    /// All offers so far.
    const std::vector<MouseOffer>& offers() const { return mOffers; }

    Editor& editor() { return *mEditor; }
    ViewContainer& container() { return *mContainer; }
    xcb_window_t window() const { return mWindow.id(); }
    /// Where something in the editor lies on the screen.
    Place onScreen(Place inView) const { return mOnScreen + inView; }

    Picture picture(const Area& area = viewArea()) const;
    Picture picture(const std::string& id) const { return picture(areaOf(id)); }

private:
    const XClient& mClient;
    HostLoop& mLoop;
    Instance* mInstance;
    Place mOnScreen;
    XWindow mWindow;
    ACFPtr<ViewContainer> mContainer;
    std::unique_ptr<Editor> mEditor;
    ViewContainer::MouseHandler mAnswer;
    std::vector<MouseOffer> mOffers;
};

} // namespace varno::test

#endif
