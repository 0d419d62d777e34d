#include "window_under_test.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTabWidget>

namespace tests {

std::string WindowUnderTest::samplePicture() {
    return CV_SOURCE_DIR "/resources/samples/picture.png";
}

std::string WindowUnderTest::samplePdf() {
    return CV_SOURCE_DIR "/resources/samples/picture.pdf";
}

WindowUnderTest::WindowUnderTest(Setup setup) {
    host::DialogRequest request;
    request.documents = std::move(setup.documents);
    if (setup.folder == ToFolder::Yes)
        request.folder = folder().toStdString();
    request.printer = std::move(setup.printer);
    request.instance = std::move(setup.instance);
    request.server = std::move(setup.server);
    request.preset = std::move(setup.preset);
    request.presetChoices = std::move(setup.presetChoices);
    request.looksForPreset = setup.looksForPreset;
    request.copies = setup.copies;
    request.choices = std::move(setup.choices);
    request.bundle = CV_BINARY_DIR "/PlugIns/CVInkQuality12.plugin";
    const std::string ppd = CV_SOURCE_DIR "/resources/models/" + setup.model + ".ppd";
    if (setup.isPpdGiven)
        request.ppd = ppd;
    dialog_ = std::make_unique<host::PrintDialog>(
        std::move(request),
        host::PrintDialog::Settings{
            .languages = std::move(setup.languages),
            .userDefaults = setup.userDefaults == nullptr ? &defaults_ : setup.userDefaults,
            .printers = {{.name = setup.model,
                          .ppdPath = ppd,
                          .ppdText = {},
                          .options = std::move(setup.kept),
                          .queue = setup.queue.empty() ? std::nullopt
                                                       : std::optional(host::QueueAddress{.queue = setup.queue})}},
            .looksForQueues = setup.looksForQueues,
            .submission = std::move(setup.submission),
            .status = std::move(setup.status),
            .cancelling = std::move(setup.cancelling),
            .authentication = std::move(setup.authentication)});
    dialog_->show();
    if (!QTest::qWaitForWindowActive(dialog_.get()))
        qFatal("The dialog is not shown.");
    QCoreApplication::processEvents();
    QObject::connect(&timer_, &QTimer::timeout, dialog_.get(), [this] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal != nullptr && modal->objectName() == "progressWindow") { // is there at no certain moment
            if (whileSending_)
                whileSending_(*modal);
            return;
        }
        if (modal == nullptr || static_cast<std::size_t>(answered_) >= answers_.size())
            return;
        const auto answer = answers_[static_cast<std::size_t>(answered_++)];
        answer(*modal);
    });
}

QString WindowUnderTest::marked(const char* option) const {
    return QString::fromStdString(dialog_->session()->description().markedChoice(option).value_or("(none)"));
}

toolkit::View& WindowUnderTest::model(Page page, const char* name) {
    const auto& panel = session().panels()[static_cast<std::size_t>(page) - 1];
    toolkit::View* view = panel->loadedViews() == nullptr ? nullptr : panel->loadedViews()->viewNamed(name);
    if (view == nullptr)
        qFatal("There is no model \"%s\".", name);
    return *view;
}

QWidget& WindowUnderTest::page() {
    return *dialog_->findChild<QTabWidget*>("tabs")->currentWidget();
}

void WindowUnderTest::open(Page page) {
    dialog_->findChild<QTabWidget*>("tabs")->setCurrentIndex(page);
    QCoreApplication::processEvents();
}

void WindowUnderTest::pick(const QString& list, const QString& title) {
    pick(list, widget<QComboBox>(list).findText(title));
}

void WindowUnderTest::pick(const QString& list, int row) {
    auto& box = widget<QComboBox>(list);
    QVERIFY2(row >= 0 && row < box.count(), qPrintable(list));
    QVERIFY2(box.isVisible() && box.isEnabled(), qPrintable(list));
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(row, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
    QCoreApplication::processEvents();
}

void WindowUnderTest::click(const QString& button) {
    auto& found = widget<QAbstractButton>(button);
    QVERIFY2(found.isVisible() && found.isEnabled(), qPrintable(button));
    found.click();
    QCoreApplication::processEvents();
}

QByteArray WindowUnderTest::ticket() const {
    QFile file(folder() + "/ticket.json");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WindowUnderTest::answer(std::vector<std::function<void(QWidget&)>> answers) {
    answers_ = std::move(answers);
    answered_ = 0;
    timer_.start(10);
}

QString textOfChoice(host::Session& session, const char* option, const QString& choice) {
    return host::choiceInWords(session.description(), option, choice.toStdString(), host::Language::English);
}

} // namespace tests
