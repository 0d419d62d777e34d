#include "host/window/job_sender.h"

#include "host/jobs/folder_submission.h"
#include "host/jobs/job_text.h"
#include "host/window/mnemonics.h"

#include <QCloseEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <atomic>
#include <thread>

namespace host {
namespace {

constexpr int kSteps = 1000; // of the progress bar

// Cannot be closed before the sending has ended: to close it is to cancel.
class ProgressWindow : public QDialog {
public:
    ProgressWindow(QWidget& window, const JobSender::Words& words, std::function<void()> cancel)
        : QDialog(&window), words_(words), cancel_(std::move(cancel)), text_(new QLabel(this)),
          bar_(new QProgressBar(this)) {
        setWindowModality(Qt::WindowModal);
        setWindowTitle(words_.title);
        text_->setTextFormat(Qt::PlainText);
        text_->setWordWrap(true);
        bar_->setRange(0, kSteps);
        bar_->setAccessibleName(words_.title);
        auto* buttons = new QDialogButtonBox(this);
        QString taken;
        button_ = buttons->addButton(textWithMnemonic(words_.cancel, taken), QDialogButtonBox::RejectRole);
        button_->setObjectName("cancelPrintingButton");
        connect(button_, &QPushButton::clicked, this, &QDialog::reject);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(text_);
        layout->addWidget(bar_);
        layout->addWidget(buttons);
        constexpr int kWidth = 360; // pixels
        resize(std::max(kWidth, sizeHint().width()), sizeHint().height());
    }

    void showProgress(const QString& document, double share) {
        if (button_->isEnabled())
            text_->setText(words_.sending.arg(document));
        bar_->setValue(static_cast<int>(share * kSteps));
    }

    void reject() override {
        button_->setEnabled(false);
        text_->setText(words_.cancelling);
        cancel_();
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        reject();
    }

private:
    const JobSender::Words& words_;
    std::function<void()> cancel_;
    QLabel* text_;
    QProgressBar* bar_;
    QPushButton* button_;
};

} // namespace

JobResult submit(const Destination& destination, const JobRequest& request, const JobProgress& progress) {
    return destination.queue ? submitToQueue(*destination.queue, request, {}, progress)
                             : submitToFolder(destination.folder, request, progress);
}

SendOutcome JobSender::send(const Destination& destination, const std::vector<JobRequest>& requests) {
    std::atomic<bool> isCancelled = false;
    QEventLoop loop;
    ProgressWindow progressWindow(window_, words_, [&] { isCancelled = true; });
    progressWindow.show();
    SendOutcome outcome;
    // The thread touches what is its own, and posts the rest to the window's.
    std::thread sender([&] {
        for (std::size_t index = 0; index < requests.size() && !isCancelled; ++index) {
            const JobRequest& request = requests[index];
            const QString name = QString::fromStdString(documentName(request.documentPath));
            const auto post = [&](double share) {
                QMetaObject::invokeMethod(
                    &progressWindow, [&progressWindow, name, share] { progressWindow.showProgress(name, share); },
                    Qt::QueuedConnection);
            };
            post(0);
            JobResult result = submission_(destination, request, [&](std::uint64_t sent, std::uint64_t total) {
                post(total == 0 ? 1 : static_cast<double>(sent) / static_cast<double>(total));
                return !isCancelled;
            });
            if (!result.ok) {
                outcome.failed = std::move(result);
                break;
            }
            outcome.sent.push_back(std::move(result));
        }
        QMetaObject::invokeMethod(
            &loop, [&loop] { loop.quit(); }, Qt::QueuedConnection);
    });
    loop.exec();
    sender.join();
    outcome.cancelled = isCancelled && outcome.sent.size() < requests.size();
    return outcome;
}

} // namespace host
