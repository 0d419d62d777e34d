#pragma once

#include <QStringList>
#include <QWidget>

namespace tests {

/// The widgets below this one that cannot show their text, picture or items whole, a sentence each.
QStringList whatIsCut(const QWidget& window);
/// The pairs of controls and labels below this one that lie over one another, a sentence each.
QStringList whatOverlaps(const QWidget& window);
/// What of both is left once the window has laid itself out, or after some seconds.
QStringList faultsOfLayout(const QWidget& window);

} // namespace tests
