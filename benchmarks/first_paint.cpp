// A plug-in of Qt for measuring what starts with a window: it shows both panels of a print dialog, and when the first
// window has been painted it tells so, with the most memory that the program took until then in KiB, and ends it.

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QGenericPlugin>
#include <QTabWidget>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

namespace benchmarks {
namespace {

constexpr int kPanels[] = {1, 2}; // their tabs; the dialog's own stands before them

void tellPainted() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:" && status >> word) {
            std::printf("painted %s\n", word.c_str());
            break;
        }
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}

class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Polish) // before it is laid out
            showPanels(*object);
        else if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, tellPainted);
        return false;
    }

private:
    void showPanels(QObject& window) {
        auto* dialog = qobject_cast<QDialog*>(&window);
        auto* tabs = dialog == nullptr ? nullptr : dialog->findChild<QTabWidget*>("tabs", Qt::FindDirectChildrenOnly);
        if (tabs == nullptr || std::exchange(panelsAreShown_, true))
            return;
        for (const int panel : kPanels)
            tabs->setCurrentIndex(panel);
    }

    bool panelsAreShown_ = false;
};

} // namespace

class FirstPaintPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "first_paint.json")

public:
    QObject* create(const QString&, const QString&) override {
        auto* painted = new FirstPaint;
        QCoreApplication::instance()->installEventFilter(painted);
        return painted;
    }
};

} // namespace benchmarks

#include "first_paint.moc"
