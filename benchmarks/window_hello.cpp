// The least that a window takes: a label.

#include <QApplication>
#include <QLabel>

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    QLabel label("Hello");
    label.show();
    return QApplication::exec();
}
