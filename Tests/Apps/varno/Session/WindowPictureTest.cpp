#include "Session/WindowPicture.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/XClient.h"
#include "Tests/Support/XServer.h"
#include "Window/EditorWindow.h"
#include "Window/WindowProperties.h"

#include <sys/resource.h>

#include <csignal>
#include <cstring>

namespace varno::test {
namespace {

constexpr std::uint32_t kRgb = 0xFFFFFF;

class WindowPictureTest : public testing::Test {
protected:
    static std::uint32_t pixel(cairo_surface_t* picture, int x, int y) {
        std::uint32_t value = 0;
        std::memcpy(&value,
                    cairo_image_surface_get_data(picture) + y * cairo_image_surface_get_stride(picture) +
                        x * static_cast<int>(sizeof value),
                    sizeof value);
        return value & kRgb;
    }

    TemporaryFolder mFolder;
};

// Larger than the screen and covered by another window: the picture is complete nevertheless.
TEST_F(WindowPictureTest, ShowsTheWholeWindowWithItsChildren) {
    const XServer server(XServer::Screen{640, 480});
    XConnection connection(server.display());
    EditorWindow window(connection, EditorWindow::Kind::kUnmanaged, {"Picture", {}});
    window.resize({900, 700});
    const WindowPicture picture(connection, window.id());
    const XClient view(server.display());
    const auto child = xcb_generate_id(view.connection());
    const std::uint32_t colour = 0x2040C0;
    xcb_create_window(view.connection(), XCB_COPY_FROM_PARENT, child, window.id(), 100, 50, 800, 650, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &colour);
    xcb_map_window(view.connection(), child);
    view.synchronise();
    window.show();
    connection.sync();
    view.makeWindow({0, 0, 640, 480});

    AtomicFile file(mFolder / "window.png", Overwrite::kRefuse);
    picture.write(file);
    file.commit();

    const CairoSurface read(cairo_image_surface_create_from_png((mFolder / "window.png").c_str()));
    ASSERT_EQ(cairo_image_surface_get_width(read.get()), 900);
    ASSERT_EQ(cairo_image_surface_get_height(read.get()), 700);
    EXPECT_EQ(pixel(read.get(), 0, 0), 0U);
    EXPECT_EQ(pixel(read.get(), 99, 699), 0U);
    EXPECT_EQ(pixel(read.get(), 100, 50), colour);
    EXPECT_EQ(pixel(read.get(), 899, 699), colour);
}

TEST_F(WindowPictureTest, AWindowThatIsNotShownHasNone) {
    const XServer server;
    XConnection connection(server.display());
    const EditorWindow window(connection, EditorWindow::Kind::kUnmanaged, {"Picture", {}});
    const WindowPicture picture(connection, window.id());
    AtomicFile file(mFolder / "window.png", Overwrite::kRefuse);
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { picture.write(file); }),
              mFolder / "window.png" + ": the window's picture cannot be had: the window is not shown");
}

TEST_F(WindowPictureTest, AServerThatCannotKeepPicturesIsReported) {
    const XServer server({}, {"-extension", "Composite"});
    XConnection connection(server.display());
    const EditorWindow window(connection, EditorWindow::Kind::kUnmanaged, {"Picture", {}});
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { WindowPicture(connection, window.id()); }),
              "no picture can be made of a window: the X server lacks the Composite extension");
}

TEST_F(WindowPictureTest, AFullDiskIsAnError) {
    const XServer server;
    const int status = inChildProcess([&] {
        XConnection connection(server.display());
        EditorWindow window(connection, EditorWindow::Kind::kUnmanaged, {"Picture", {}});
        window.resize({300, 200});
        const WindowPicture picture(connection, window.id());
        window.show();
        connection.sync();
        AtomicFile file(mFolder / "window.png", Overwrite::kRefuse);
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit nothing{0, 0};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { picture.write(file); }),
                  mFolder / "window.png" + ": cannot be written: File too large");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mFolder.listing(), "");
}

} // namespace
} // namespace varno::test
