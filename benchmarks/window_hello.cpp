// The least that a window takes: a label.

#include "first_paint.h"

#include <QLabel>

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    QLabel label("Hello");
    new benchmarks::FirstPaint(label, benchmarks::tellPainted);
    label.show();
    return QApplication::exec();
}
