/// How long the window takes from a slider's move to the new picture on its label.
///
///     window_benchmark [--check]
///
/// The dialog is shown on the offscreen platform; each of the five sliders is moved through its range. Times are from
/// the slider's valueChanged until the picture's widget was painted anew. With --check the exit code is 1 when more
/// than one move in twenty takes longer than a frame.

#include "host/window/print_dialog.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QSlider>
#include <QTabWidget>
#include <QToolButton>

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr double kFrame = 16; // milliseconds
constexpr int kColorTab = 2;
constexpr const char* kSliders[] = {"brightnessSlider", "contrastSlider", "redSlider", "greenSlider", "blueSlider"};

/// Counts how often a widget was painted.
class Paintings : public QObject {
public:
    explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

template <typename Widget>
Widget& widgetNamed(QWidget& window, const char* name) {
    auto* widget = window.findChild<Widget*>(name);
    if (widget == nullptr)
        qFatal("There is no widget \"%s\".", name);
    return *widget;
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    toolkit::MemoryUserDefaults defaults;
    host::DialogRequest request;
    request.bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin";
    host::PrintDialog dialog(std::move(request),
                             {.languages = {"en"},
                              .userDefaults = &defaults,
                              .printers = {{.name = "sample",
                                            .ppdPath = CV_SOURCE_DIR "/resources/models/corvane-a3.ppd",
                                            .ppdText = {},
                                            .options = {},
                                            .queue = {}}},
                              .looksForQueues = false});
    dialog.show();
    auto& tabs = widgetNamed<QTabWidget>(dialog, "tabs");
    tabs.setCurrentIndex(kColorTab);
    QWidget& page = *tabs.currentWidget();
    widgetNamed<QToolButton>(page, "optionButton").click();
    widgetNamed<QAbstractButton>(page, "colorEnhanceButton").click();
    QCoreApplication::processEvents();

    auto& picture = widgetNamed<QLabel>(page, "effectImageView");
    Paintings paintings(picture);
    std::vector<double> times; // milliseconds
    for (const char* name : kSliders) {
        auto& slider = widgetNamed<QSlider>(page, name);
        for (int value = slider.minimum(); value <= slider.maximum(); ++value) {
            if (value == slider.value())
                continue;
            const int before = paintings.count;
            QElapsedTimer timer;
            timer.start();
            slider.setValue(value);
            while (paintings.count == before)
                QCoreApplication::processEvents();
            times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
    }
    std::ranges::sort(times);
    const double median = times[times.size() / 2], slow = times[times.size() * 95 / 100];
    const QPixmap shown = picture.pixmap();
    std::printf("slider to picture (%dx%d), %zu moves: median %.2f ms, 95 %% below %.2f ms, a frame is %.0f ms\n",
                shown.width(), shown.height(), times.size(), median, slow, kFrame);
    const bool checks = argumentCount > 1 && std::string_view(arguments[1]) == "--check";
    return checks && slow > kFrame ? 1 : 0;
}
