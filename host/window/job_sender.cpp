#include "host/window/job_sender.h"

#include "host/jobs/folder_submission.h"
#include "host/jobs/job_changes.h"
#include "host/jobs/job_text.h"
#include "host/window/mnemonics.h"

#include <QCloseEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QVBoxLayout>

#include <atomic>
#include <thread>

namespace host {
namespace {

constexpr int kSteps = 1000; // of the progress bar
// A job that waits is looked at for some seconds.
constexpr int kMostLooks = 10, kLookMilliseconds = 500;
constexpr int kMostQuestions = 3; // for a password that is not the printer's
// Short enough for a user who waits.
constexpr JobLimits kStatusLimits = {.connect = std::chrono::seconds(3), .response = std::chrono::seconds(5)};

// Cannot be closed before the sending has ended: to close it is to cancel.
class ProgressWindow : public QDialog {
public:
    ProgressWindow(QWidget& window, const JobSender::Words& words, std::function<void()> cancel)
        : QDialog(&window), words_(words), cancel_(std::move(cancel)), text_(new QLabel(this)),
          bar_(new QProgressBar(this)) {
        setObjectName("progressWindow");
        setWindowModality(Qt::WindowModal);
        setWindowTitle(words_.title);
        text_->setObjectName("progressText");
        text_->setTextFormat(Qt::PlainText);
        text_->setWordWrap(true);
        bar_->setRange(0, kSteps);
        bar_->setAccessibleName(words_.title);
        auto* buttons = new QDialogButtonBox(this);
        QString taken;
        button_ = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
        setTextWithMnemonic(*button_, words_.cancel, taken);
        button_->setObjectName("cancelPrintingButton");
        connect(button_, &QPushButton::clicked, this, &QDialog::reject);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(text_);
        layout->addWidget(bar_);
        layout->addWidget(buttons);
        constexpr int kWidth = 360; // pixels
        resize(std::max(kWidth, sizeHint().width()), sizeHint().height());
    }

    void showProgress(const QString& document, std::uint64_t sent, std::uint64_t total) {
        const QLocale locale;
        if (button_->isEnabled())
            text_->setText(words_.sending.arg(document));
        bar_->setFormat(words_.bytes.arg(locale.formattedDataSize(static_cast<qint64>(sent)),
                                         locale.formattedDataSize(static_cast<qint64>(total))));
        bar_->setValue(total == 0 ? 0
                                  : static_cast<int>(static_cast<double>(sent) / static_cast<double>(total) * kSteps));
    }

    void showStatus(const JobStatus& status) {
        bar_->setRange(0, 0); // busy
        if (button_->isEnabled() && status.error.empty())
            text_->setText(words_.status(status));
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

bool needsTelling(const JobStatus& status) {
    return status.isHindered || status.wantsPassword || status.stage == JobStage::Held ||
           status.stage == JobStage::Failed || status.stage == JobStage::Cancelled;
}

} // namespace

JobResult submit(const Destination& destination, const DocumentsJob& job, const JobProgress& progress) {
    if (destination.queue)
        return submitDocumentsToQueue(*destination.queue, job.request, job.documents, {}, progress,
                                      destination.passwords);
    JobRequest request = job.request;
    request.documentPath = job.documents.front();
    return submitToFolder(destination.folder, request, progress);
}

JobStatus readStatus(const Destination& destination, const JobResult& result) {
    return destination.queue ? jobStatus(destination.queue->server, result.jobId, kStatusLimits, destination.passwords)
                             : JobStatus();
}

std::string cancelSent(const Destination& destination, const JobResult& result) {
    return destination.queue ? cancelJob(destination.queue->server, std::to_string(result.jobId), kStatusLimits,
                                         destination.passwords)
                             : std::string();
}

std::string authenticateSent(const Destination& destination, const JobResult& result, const Credentials& credentials) {
    return destination.queue ? authenticateJob(destination.queue->server, std::to_string(result.jobId), credentials,
                                               kStatusLimits, destination.passwords)
                             : std::string();
}

// False where nobody gives one.
bool JobSender::giveItsPassword(const Destination& destination, JobResult& job, bool isAgain) const {
    if (!destination.passwords)
        return false;
    const auto given =
        destination.passwords({.server = destination.queue ? destination.queue->queue : std::string(),
                               .user = qEnvironmentVariable("CUPS_USER", qEnvironmentVariable("USER")).toStdString(),
                               .isAgain = isAgain});
    if (!given)
        return false;
    job.note = authentication_(destination, job, *given); // whether the printer took it, the next look at the job tells
    return true;
}

SendOutcome JobSender::send(const Destination& destination, const std::vector<DocumentsJob>& jobs) {
    std::atomic<bool> isCancelled = false, isNewsOnItsWay = false;
    QSemaphore cancelled; // wakes the thread where it waits between two looks at a job
    QEventLoop loop;
    ProgressWindow progressWindow(window_, words_, [&] {
        isCancelled = true;
        cancelled.release();
    });
    progressWindow.show();
    SendOutcome outcome;
    std::vector<std::optional<JobStatus>> statuses; // of the sent jobs, where they are to be told
    // The thread touches what is its own, and posts the rest to the window's.
    std::thread sender([&] {
        for (std::size_t index = 0; index < jobs.size() && !isCancelled; ++index) {
            const DocumentsJob& job = jobs[index];
            const QString name = QString::fromStdString(job.documents.size() > 1 && !job.request.title.empty()
                                                            ? plainText(job.request.title, kMaximumTitleBytes)
                                                            : documentName(job.documents.front()));
            const auto post = [&](auto show) {
                QMetaObject::invokeMethod(&progressWindow, show, Qt::QueuedConnection);
            };
            post([&progressWindow, name] { progressWindow.showProgress(name, 0, 0); });
            JobResult result = submission_(destination, job, [&](std::uint64_t sent, std::uint64_t total) {
                // One at a time: a quick server would bury what the user does below news.
                if (!isNewsOnItsWay.exchange(true))
                    post([&progressWindow, &isNewsOnItsWay, name, sent, total] {
                        isNewsOnItsWay = false;
                        progressWindow.showProgress(name, sent, total);
                    });
                return !isCancelled;
            });
            int questions = 0;
            std::optional<JobStatus> told;
            for (int look = 0; result.ok && result.jobId != 0 && look < kMostLooks && !isCancelled; ++look) {
                const JobStatus status = status_(destination, result);
                post([&progressWindow, status] { progressWindow.showStatus(status); });
                if (status.error.empty())
                    result.note.clear(); // is older
                const bool isAnswered = status.wantsPassword && questions < kMostQuestions &&
                                        giveItsPassword(destination, result, questions++ > 0);
                if (!isAnswered && needsTelling(status))
                    told = status;
                if (!status.error.empty() || (status.stage != JobStage::Waiting && !isAnswered) || told ||
                    !result.note.empty())
                    break;
                if (cancelled.tryAcquire(1, kLookMilliseconds)) {
                    std::string error = cancelling_(destination, result);
                    result = {.ok = false, .jobId = error.empty() ? 0 : result.jobId, .error = std::move(error)};
                }
            }
            if (!result.ok) {
                outcome.failed = std::move(result);
                break;
            }
            outcome.sent.push_back(std::move(result));
            statuses.push_back(std::move(told));
        }
        QMetaObject::invokeMethod(
            &loop, [&loop] { loop.quit(); }, Qt::QueuedConnection);
    });
    loop.exec();
    sender.join();
    for (std::size_t index = 0; index < statuses.size(); ++index)
        if (statuses[index])
            outcome.sent[index].note = words_.status(*statuses[index]).toStdString();
    outcome.cancelled = isCancelled && outcome.sent.size() < jobs.size();
    return outcome;
}

} // namespace host
