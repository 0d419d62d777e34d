/// How long the window takes from a slider's move to the new picture on its label, and how long its event loop stands
/// still at most while a slow print server is asked for its queues and a PPD, and takes a document.
///
///     window_benchmark [--check]
///
/// The dialog is shown on the offscreen platform; each of the five sliders is moved through its range. Times are from
/// the slider's valueChanged until the picture's widget was painted anew. The server is one of this program's own,
/// which pauses before each answer and each piece of the document. With --check the exit code is 1 when more than one
/// move in twenty takes longer than a frame, or the loop stood still for longer than a user notices.

#include "host/window/print_dialog.h"
#include "tests/support/fake_print_server.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr double kFrame = 16;    // milliseconds
constexpr double kNoticed = 100; // milliseconds
constexpr auto kServersPause = std::chrono::milliseconds(2);
constexpr qint64 kDocumentBytes = 16 << 20;
constexpr const char* kModel = CV_SOURCE_DIR "/resources/models/corvane-a3.ppd";
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

/// Ticks in the event loop, and keeps the longest time between two ticks.
class Heartbeat {
public:
    Heartbeat() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { tick(); });
        timer_.start(1);
        lastTick_.start();
    }
    /// Milliseconds since the last call.
    double takeLongest() {
        tick();
        return std::exchange(longest_, 0);
    }

private:
    void tick() {
        longest_ = std::max(longest_, static_cast<double>(lastTick_.nsecsElapsed()) / 1e6);
        lastTick_.restart();
    }

    QTimer timer_;
    QElapsedTimer lastTick_;
    double longest_ = 0;
};

template <typename Widget>
Widget& widgetNamed(QWidget& window, const char* name) {
    auto* widget = window.findChild<Widget*>(name);
    if (widget == nullptr)
        qFatal("There is no widget \"%s\".", name);
    return *widget;
}

/// Milliseconds for which the loop stood still at most.
struct Stalls {
    double searching = 0, opening = 0, sending = 0;
};

/// Opens a dialog on the slow server's queue and prints a large document from it.
Stalls stallsBesideASlowServer() {
    QFile model(kModel);
    QTemporaryFile document;
    if (!model.open(QIODevice::ReadOnly) || !document.open() || document.write(QByteArray(kDocumentBytes, 'x')) < 0 ||
        !document.flush())
        qFatal("The model or the document cannot be used.");
    const test_support::FakePrintServer server({}, {}, model.readAll().toStdString(), kServersPause);
    toolkit::MemoryUserDefaults defaults;
    host::DialogRequest request;
    request.documents = {document.fileName().toStdString()};
    request.printer = "Recorder";
    request.server = server.hostAndPort();
    request.bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin";
    host::PrintDialog dialog(std::move(request),
                             {.languages = {"en"}, .userDefaults = &defaults, .printers = {}, .looksForQueues = true});
    dialog.show();
    QCoreApplication::processEvents();
    Heartbeat heartbeat;
    Stalls stalls;
    while (dialog.session() == nullptr) {
        stalls.searching = std::max(stalls.searching, heartbeat.takeLongest());
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // the last round opens the session
    }
    stalls.opening = heartbeat.takeLongest();
    QTimer agrees; // to the alert before printing
    agrees.callOnTimeout([] {
        if (const QWidget* modal = QApplication::activeModalWidget())
            if (auto* button = modal->findChild<QPushButton*>("normalPaperAlertOKButton"))
                button->click();
    });
    agrees.start(10);
    dialog.print();
    stalls.sending = heartbeat.takeLongest();
    if (dialog.printed().empty() || server.documentBytes() < static_cast<std::uint64_t>(kDocumentBytes))
        qFatal("The document was not printed: %s", qPrintable(dialog.message()));
    return stalls;
}

} // namespace

int main(int argumentCount, char* arguments[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    toolkit::MemoryUserDefaults defaults;
    host::DialogRequest request;
    request.bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin";
    host::PrintDialog dialog(
        std::move(request),
        {.languages = {"en"},
         .userDefaults = &defaults,
         .printers = {{.name = "sample", .ppdPath = kModel, .ppdText = {}, .options = {}, .queue = {}}},
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
    const Stalls stalls = stallsBesideASlowServer();
    std::printf(
        "longest stand-still of the event loop beside a slow server: %.1f ms while searching and fetching the PPD, "
        "%.1f ms opening it, %.1f ms while sending %lld MB; a user notices %.0f ms\n",
        stalls.searching, stalls.opening, stalls.sending, static_cast<long long>(kDocumentBytes >> 20), kNoticed);
    const bool isNoticed = std::max({stalls.searching, stalls.opening, stalls.sending}) > kNoticed;
    const bool checks = argumentCount > 1 && std::string_view(arguments[1]) == "--check";
    return checks && (slow > kFrame || isNoticed) ? 1 : 0;
}
