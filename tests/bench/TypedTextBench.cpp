// What one key costs in the session's display, beside the plain way to do it: a text item that gets the whole text
// anew. CPU time of this process per key, from the key to the frame that shows it; needs a display.

#include "Costs.h"
#include "session/EmojiPool.h"
#include "ui/text/TypedTextItem.h"
#include "ui/text/TypedTextLayout.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace tapalong {
namespace {

using namespace bench;

constexpr double fontSize = 96;
constexpr double margin = 40;

double cpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double residentMebibytes() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

/// One in ten an emoji, one in nine a blank, nine colours.
class Typist {
public:
    explicit Typist(std::size_t count) {
        while (content.size() < count) {
            type();
        }
    }

    void type() {
        const auto roll = m_random() % 90;
        std::string text(1, static_cast<char>('a' + m_random() % 26));
        if (roll < 9) {
            text = EmojiPool::all()[m_random() % EmojiPool::all().size()].utf8();
        } else if (roll < 19) {
            text = " ";
        }
        const double hue = static_cast<double>(m_next % 9) / 9;
        content.emplace_back(Character::first(text).value(), SrgbColor{1 - hue, hue, 0.5}, Uuid{m_next, m_next});
        ++m_next;
    }

    TypedContent content;

private:
    std::mt19937 m_random{7};
    std::uint64_t m_next = 1;
};

class Stage {
public:
    Stage() {
        m_window.setColor(QColor(18, 18, 26));
        m_window.setFlags(Qt::FramelessWindowHint);
        m_window.resize(1920, 1080);
        QObject::connect(&m_window, &QQuickWindow::frameSwapped, [this] { ++m_frames; });
        m_window.show();
        untilFrame([] {});
    }

    QQuickWindow& window() { return m_window; }
    [[nodiscard]] double width() const { return m_window.width() - 2 * margin; }
    [[nodiscard]] double height() const { return m_window.height(); }

    /// CPU milliseconds until what `change` did has been shown.
    double untilFrame(const std::function<void()>& change) {
        const double before = cpuMilliseconds();
        const int frame = m_frames;
        change();
        m_window.update();
        while (m_frames == frame) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return cpuMilliseconds() - before;
    }

private:
    QQuickWindow m_window;
    int m_frames = 0;
};

Costs measure(Stage& stage, std::size_t warmUp, std::size_t keys, const std::function<void()>& key) {
    for (std::size_t i = 0; i < warmUp; ++i) {
        stage.untilFrame(key);
    }
    std::vector<double> samples;
    for (std::size_t i = 0; i < keys; ++i) {
        samples.push_back(stage.untilFrame(key));
    }
    return costsOf(std::move(samples));
}

struct Ours {
    explicit Ours(Stage& stage, std::size_t count) : m_stage(stage), typist(count) {
        item.setParentItem(stage.window().contentItem());
        item.setX(margin);
        item.setWidth(stage.width());
        item.setPrimaryColor(Qt::white);
        item.setFontSize(fontSize);
        item.setShowCursor(true);
        stage.untilFrame([this] { show(); });
    }

    void show() {
        item.setCharacters(&typist.content);
        item.setHeight(item.implicitHeight());
        item.setViewportHeight(m_stage.height());
        const double y = std::min(margin, m_stage.height() - margin - item.implicitHeight());
        item.setY(y);
        item.setViewportY(-y);
    }

    void type() {
        typist.type();
        show();
    }

    void trim() {
        const auto drop = static_cast<std::ptrdiff_t>(typist.content.size() * 3 / 10);
        typist.content.erase(typist.content.begin(), typist.content.begin() + drop);
        show();
    }

    Stage& m_stage;
    Typist typist;
    TypedTextItem item;
};

struct Rebuilt {
    explicit Rebuilt(Stage& stage, std::size_t count) : typist(count) {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nText { textFormat: Text.StyledText; wrapMode: Text.Wrap; color: \"white\" }",
                          QUrl());
        item.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!item) {
            qFatal("%s", qPrintable(component.errorString()));
        }
        item->setParentItem(stage.window().contentItem());
        item->setX(margin);
        item->setWidth(stage.width());
        item->setProperty("font", SessionFace(fontSize).font());
        m_height = stage.height();
        stage.untilFrame([this] { show(); });
    }

    void show() {
        QString text;
        for (const TypedCharacter& typed : typist.content) {
            const auto color = typed.color->srgb().value();
            const QString shown = QString::fromStdString(typed.character.utf8());
            text += QStringLiteral("<font color=\"%1\">%2</font>")
                        .arg(QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                              static_cast<float>(color.blue))
                                 .name(),
                             shown);
        }
        item->setProperty("text", text);
        item->setY(std::min(margin, m_height - margin - item->implicitHeight()));
    }

    void type() {
        typist.type();
        show();
    }

    QQmlEngine m_engine;
    double m_height = 0;
    Typist typist;
    std::unique_ptr<QQuickItem> item;
};

void run() {
    Stage stage;
    constexpr std::array<std::size_t, 4> counts{100, 1000, 5000, 50000};
    printCostsHeader();
    std::array<Costs, counts.size()> ours{};
    double trim = 0;
    double memory = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        constexpr std::size_t keys = 200;
        Ours text(stage, counts.at(i));
        ours.at(i) = measure(stage, 20, keys, [&] { text.type(); });
        printCosts("typed text", counts.at(i), keys, ours.at(i));
        memory = i == 0 ? -residentMebibytes() : memory;
        if (i + 1 == counts.size()) {
            memory += residentMebibytes();
            trim = stage.untilFrame([&] { text.trim(); });
        }
    }
    std::array<Costs, counts.size()> rebuilt{};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        const std::size_t keys = counts.at(i) > 1000 ? (counts.at(i) > 5000 ? 3 : 10) : 30;
        Rebuilt text(stage, counts.at(i));
        rebuilt.at(i) = measure(stage, 1, keys, [&] { text.type(); });
        printCosts("rebuilt styled text", counts.at(i), keys, rebuilt.at(i));
    }
    std::printf("key at 50000 / key at 100                  %8.2f\n", ours[3].median / ours[0].median);
    std::printf("rebuilt / typed text at 5000               %8.0f\n", rebuilt[2].median / ours[2].median);
    std::printf("rebuilt / typed text at 50000              %8.0f\n", rebuilt[3].median / ours[3].median);
    std::printf("trim of 50000 / key at 50000               %8.1f\n", trim / ours[3].median);
    std::printf("memory at 50000 less memory at 100, MiB    %8.1f\n", memory);
}

} // namespace
} // namespace tapalong

int main(int argc, char** argv) {
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    tapalong::run();
    return 0;
}
