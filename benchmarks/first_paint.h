#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

namespace benchmarks {

/// Calls once, after the widget was painted.
class FirstPaint : public QObject {
public:
    FirstPaint(QWidget& widget, std::function<void()> call) : QObject(&widget), call_(std::move(call)) {
        widget.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && call_)
            QTimer::singleShot(0, this, std::exchange(call_, nullptr));
        return false;
    }

private:
    std::function<void()> call_;
};

/// Tells that the window is painted, with the most memory that it took until now, in KiB, and ends.
inline void tellPainted() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:" && status >> word) {
            std::printf("painted %s\n", word.c_str());
            break;
        }
    std::fflush(stdout);
    QApplication::quit();
}

} // namespace benchmarks
