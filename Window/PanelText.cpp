#include "Window/PanelText.h"

namespace varno {
namespace {

struct FreeDescription {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
struct FreeOptions {
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
struct Unref {
    void operator()(PangoContext* context) const { g_object_unref(context); }
};
struct FreeText {
    void operator()(char* text) const { g_free(text); }
};

// The map is one for the whole program, owned by the library.
std::unique_ptr<PangoContext, Unref> textContext() {
    std::unique_ptr<PangoContext, Unref> context(
        pango_font_map_create_context(pango_cairo_font_map_get_default()));
    const std::unique_ptr<cairo_font_options_t, FreeOptions> options(cairo_font_options_create());
    // Grey edges: right on every order of a screen's colours.
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
    pango_cairo_context_set_font_options(context.get(), options.get());
    return context;
}

} // namespace

PanelText::PanelText(const PanelStyle& style, const std::string& text, double size, Weight weight)
    : mLayout(pango_layout_new(textContext().get())) {
    const std::unique_ptr<PangoFontDescription, FreeDescription> font(pango_font_description_new());
    pango_font_description_set_family(font.get(), style.font.c_str());
    pango_font_description_set_absolute_size(font.get(), style.pixels(size) * double{PANGO_SCALE});
    pango_font_description_set_weight(font.get(),
                                      weight == Weight::kBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(mLayout.get(), font.get());
    const std::unique_ptr<char, FreeText> valid(
        g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    pango_layout_set_text(mLayout.get(), valid.get(), -1);
    pango_layout_set_single_paragraph_mode(mLayout.get(), 1);
}

void PanelText::limit(int width, Overlong overlong) {
    pango_layout_set_width(mLayout.get(), width * PANGO_SCALE);
    if (overlong == Overlong::kCut) {
        pango_layout_set_ellipsize(mLayout.get(), PANGO_ELLIPSIZE_END);
    } else {
        pango_layout_set_wrap(mLayout.get(), PANGO_WRAP_WORD_CHAR);
    }
}

WindowSize PanelText::size() const {
    WindowSize size;
    pango_layout_get_pixel_size(mLayout.get(), &size.width, &size.height);
    return size;
}

void PanelText::draw(cairo_t* context, WindowPlace place, std::uint32_t colour) const {
    setPanelColour(context, colour);
    cairo_move_to(context, place.x, place.y);
    pango_cairo_show_layout(context, mLayout.get());
}

void setPanelColour(cairo_t* context, std::uint32_t colour) {
    constexpr std::uint32_t kByte = 0xFF;
    constexpr int kRed = 16;
    constexpr int kGreen = 8;
    constexpr double kFull = kByte;
    cairo_set_source_rgb(context, (colour >> kRed & kByte) / kFull, (colour >> kGreen & kByte) / kFull,
                         (colour & kByte) / kFull);
}

void fillPanel(cairo_t* context, const WindowArea& area, std::uint32_t colour) {
    setPanelColour(context, colour);
    cairo_rectangle(context, area.x, area.y, area.width, area.height);
    cairo_fill(context);
}

void drawPanel(cairo_t* context, WindowSize size, const PanelStyle& style) {
    const int line = style.pixels(1);
    fillPanel(context, {0, 0, size.width, size.height}, style.edge);
    fillPanel(context, {line, line, size.width - 2 * line, size.height - 2 * line}, style.panel);
}

} // namespace varno
