#include "host/window/page_ranges.h"

#include <QRegularExpression>
#include <QStringList>

namespace host {

std::optional<std::string> pageRanges(const QString& typed) {
    if (typed.trimmed().isEmpty())
        return std::string();
    static const QRegularExpression kRange(
        QStringLiteral("^\\s*([1-9][0-9]{0,8})\\s*(?:-\\s*([1-9][0-9]{0,8})\\s*)?$"));
    QStringList ranges;
    for (const QString& part : typed.split(u',')) {
        const QRegularExpressionMatch match = kRange.match(part);
        if (!match.hasMatch())
            return std::nullopt;
        const QString first = match.captured(1), last = match.captured(2);
        if (!last.isEmpty() && last.toInt() < first.toInt())
            return std::nullopt;
        ranges << (last.isEmpty() ? first : first + u'-' + last);
    }
    return ranges.join(u',').toStdString();
}

} // namespace host
