#pragma once

#include "host/window/print_dialog.h"

#include <QDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

class QComboBox;

namespace tests {

/// A print dialog for a sample printer, shown, with a document, a folder to print to, and preferences that last as
/// long as this object.
class WindowUnderTest {
public:
    enum class ToFolder { Yes, No };
    struct Setup {
        std::string model = "corvane-a3";
        std::vector<std::string> languages = {"en"};
        std::vector<host::JobOption> choices = {};
        std::vector<std::string> documents = {samplePicture()};
        std::string queue = {};                        ///< whose printer it is; its jobs go to the folder all the same
        std::vector<host::JobOption> kept = {};        ///< for the queue
        toolkit::UserDefaults* userDefaults = nullptr; ///< none: preferences that last as long as this object
        host::Submission submission = host::submit;
        host::StatusReading status = host::readStatus;
        host::JobCancelling cancelling = host::cancelSent;
        host::JobAuthentication authentication = host::authenticateSent;
        ToFolder folder = ToFolder::Yes;
        bool looksForQueues = false;
        std::string printer = {}, instance = {}, server = {}; ///< as in host::DialogRequest
        std::string preset = {};                              ///< the same
        std::vector<host::JobOption> presetChoices = {};      ///< the same
        bool looksForPreset = false;                          ///< the same
        int copies = 0;                                       ///< the same
        bool isPpdGiven = false;                              ///< the printer is a PPD that stands for a queue
    };
    /// The pages of the dialog, as tabs.
    enum Page { General = 0, PrintSetting = 1, ColorSetting = 2, Summary = 3 };

    static std::string samplePicture();
    static std::string samplePdf();

    explicit WindowUnderTest(Setup setup);
    WindowUnderTest() : WindowUnderTest(Setup()) {}

    [[nodiscard]] host::PrintDialog& dialog() { return *dialog_; }
    [[nodiscard]] host::Session& session() { return *dialog_->session(); }
    [[nodiscard]] toolkit::UserDefaults& defaults() { return defaults_; }
    [[nodiscard]] QString folder() const { return temporary_.filePath("printed"); }
    [[nodiscard]] QString marked(const char* option) const;
    [[nodiscard]] toolkit::View& model(Page page, const char* name);

    void open(Page page);
    /// The widget of this name, on the opened page or around the pages. Ends the program where there is none.
    template <typename Widget>
    Widget& widget(const QString& name) {
        Widget* found = page().findChild<Widget*>(name);
        if (found == nullptr)
            found = dialog_->findChild<Widget*>(name);
        if (found == nullptr)
            qFatal("There is no widget \"%s\".", qPrintable(name));
        return *found;
    }
    /// The opened page.
    [[nodiscard]] QWidget& page();

    /// Picks an item from a list as a user does, in the opened list.
    void pick(const QString& list, const QString& title);
    void pick(const QString& list, int row);
    void click(const QString& button);

    /// The ticket of the folder; empty where nothing was printed.
    [[nodiscard]] QByteArray ticket() const;

    /// What is done with the window that shows the sending, as often as it is looked at.
    void whileSending(std::function<void(QWidget&)> act) { whileSending_ = std::move(act); }
    /// For each other modal window, in the order in which they come, what is done with it. Runs while the event loops
    /// do.
    void answer(std::vector<std::function<void(QWidget&)>> answers);
    /// How many of the answers were given.
    [[nodiscard]] int answered() const { return answered_; }

private:
    QTemporaryDir temporary_;
    toolkit::MemoryUserDefaults defaults_;
    std::unique_ptr<host::PrintDialog> dialog_;
    std::function<void(QWidget&)> whileSending_;
    std::vector<std::function<void(QWidget&)>> answers_;
    int answered_ = 0;
    QTimer timer_;
};

/// The texts of a PPD's option and choice, in the dialog's language.
QString textOfChoice(host::Session& session, const char* option, const QString& choice);

} // namespace tests
