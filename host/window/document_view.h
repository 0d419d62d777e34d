#pragma once

#include "host/window/document_facts.h"
#include "host/window/window_texts.h"

#include <QWidget>

#include <string>
#include <vector>

class QLabel;

namespace host {

/// Shows what is printed: the name, the number of pages, and a small picture of the first page, which is read in the
/// background once the window is there.
class DocumentView : public QWidget {
public:
    DocumentView(const Language& language, const QString& name, std::vector<std::string> documents);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitPicture();
    void readFirst();
    void show(const DocumentFacts& facts);

    Language language_;
    std::vector<std::string> documents_;
    bool isRead_ = false;
    int readings_ = 0;
    QLabel* picture_;
    QLabel* details_;
};

} // namespace host
