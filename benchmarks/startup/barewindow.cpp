#include <QApplication>
#include <QMainWindow>

/// The least that a program with a main window does.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1200, 800);
    window.show();
    return QApplication::exec();
}
