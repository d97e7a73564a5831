// What one key costs in another toolkit's own text view, with the scene of typed_text_bench: the same characters, a
// colour each, and a new paragraph every hundred, which is the shape that this view is made for. CPU time of this
// process per key, from the insertion to the frame that shows it; needs a display.

#include "Costs.h"
#include "Process.h"

#include <gtk/gtk.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace tapalong::bench {
namespace {

constexpr int width = 1920;
constexpr int height = 1080;
constexpr int lineGap = 29; // 0.3 times the font size
constexpr std::size_t paragraph = 100;

/// As the program under test types: one in ten an emoji, one in nine a blank, nine colours.
class Typist {
public:
    std::string next() {
        constexpr std::array emoji{"🐶", "🐱", "🦊", "🐻", "🐼", "🐸", "🦁", "🐮", "🐷", "🐵", "🌈", "⭐", "🍎", "🍓", "🚀"};
        ++m_count;
        const auto roll = m_random() % 90;
        if (roll < 9) {
            return emoji.at(m_random() % emoji.size());
        }
        return roll < 19 ? " " : std::string(1, static_cast<char>('a' + m_random() % 26));
    }
    [[nodiscard]] std::size_t count() const { return m_count; }

private:
    std::mt19937 m_random{7}; // NOLINT(cert-msc51-cpp): the same text in every run
    std::size_t m_count = 0;
};

class Stage {
public:
    Stage() : m_window(GTK_WINDOW(gtk_window_new())), m_view(GTK_TEXT_VIEW(gtk_text_view_new())) {
        auto* const style = gtk_css_provider_new();
        gtk_css_provider_load_from_data(
            style, "textview { font: 96px 'DejaVu Sans'; } textview, text { background: #12121a; color: white; }", -1);
        gtk_style_context_add_provider_for_display(gdk_display_get_default(), GTK_STYLE_PROVIDER(style),
                                                   GTK_STYLE_PROVIDER_PRIORITY_USER);
        g_object_unref(style);
        // Nothing but the key shall cost anything.
        g_object_set(gtk_settings_get_default(), "gtk-cursor-blink", FALSE, "gtk-enable-animations", FALSE, nullptr);
        gtk_text_view_set_wrap_mode(m_view, GTK_WRAP_WORD_CHAR);
        gtk_text_view_set_pixels_below_lines(m_view, lineGap);
        gtk_text_view_set_pixels_inside_wrap(m_view, lineGap);
        for (std::size_t i = 0; i < m_colors.size(); ++i) {
            const auto hue = static_cast<float>(i) / static_cast<float>(m_colors.size());
            const GdkRGBA color{1 - hue, hue, 0.5F, 1};
            m_colors.at(i) = gtk_text_buffer_create_tag(buffer(), nullptr, "foreground-rgba", &color, nullptr);
        }
        open();
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage() { gtk_window_destroy(m_window); }

    void fill(std::size_t count) {
        while (m_typist.count() < count) {
            insertNext();
        }
        showEnd();
        rest();
    }

    /// CPU milliseconds until the key is on the screen.
    double type() {
        const double before = cpuMilliseconds();
        const int frame = m_frames;
        insertNext();
        showEnd();
        while (m_frames == frame) {
            g_main_context_iteration(nullptr, TRUE);
        }
        return cpuMilliseconds() - before;
    }

private:
    void open() {
        auto* const scroller = gtk_scrolled_window_new();
        gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(scroller), GTK_POLICY_NEVER, GTK_POLICY_EXTERNAL);
        gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(scroller), GTK_WIDGET(m_view));
        gtk_window_set_child(m_window, scroller);
        gtk_window_set_decorated(m_window, FALSE);
        gtk_window_set_default_size(m_window, width, height);
        gtk_window_present(m_window);
        g_signal_connect(gtk_widget_get_frame_clock(GTK_WIDGET(m_view)), "after-paint",
                         G_CALLBACK(+[](GdkFrameClock*, gpointer self) { ++static_cast<Stage*>(self)->m_frames; }),
                         this);
        rest();
    }

    /// Until there has been nothing to do for a while: lines that are not seen are measured when there is time.
    static void rest() {
        constexpr gulong aWhile = 100'000; // microseconds
        do {
            while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
            }
            g_usleep(aWhile);
        } while (g_main_context_pending(nullptr) != FALSE);
    }

    [[nodiscard]] GtkTextBuffer* buffer() const { return gtk_text_view_get_buffer(m_view); }

    void insertNext() {
        GtkTextIter end;
        gtk_text_buffer_get_end_iter(buffer(), &end);
        const auto text = m_typist.next();
        gtk_text_buffer_insert_with_tags(buffer(), &end, text.c_str(), -1,
                                         m_colors.at(m_typist.count() % m_colors.size()), nullptr);
        if (m_typist.count() % paragraph == 0) {
            gtk_text_buffer_insert(buffer(), &end, "\n", 1);
        }
        gtk_text_buffer_place_cursor(buffer(), &end);
    }

    void showEnd() { gtk_text_view_scroll_mark_onscreen(m_view, gtk_text_buffer_get_insert(buffer())); }

    GtkWindow* m_window;
    GtkTextView* m_view;
    std::array<GtkTextTag*, 9> m_colors{};
    Typist m_typist;
    int m_frames = 0;
};

void run() {
    constexpr int warmUp = 20;
    constexpr std::size_t keys = 200;
    Stage stage;
    printCostsHeader();
    for (const std::size_t count : {100, 1000, 5000, 50000}) {
        stage.fill(count);
        for (int i = 0; i < warmUp; ++i) {
            stage.type();
        }
        std::vector<double> samples;
        for (std::size_t i = 0; i < keys; ++i) {
            samples.push_back(stage.type());
        }
        printCosts("GTK text view, paragraphs", count, keys, costsOf(std::move(samples)));
    }
}

} // namespace
} // namespace tapalong::bench

int main() {
    // The cheaper of the two where there is no graphics card, as for the program under test.
    g_setenv("GSK_RENDERER", "cairo", FALSE);
    gtk_init();
    tapalong::bench::run();
    return 0;
}
