#include <QApplication>
#include <QMainWindow>

/// A minimal program with a main window.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1200, 800);
    window.show();
    return QApplication::exec();
}
