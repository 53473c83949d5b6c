#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.setWindowTitle("Fieldwright - [Unsaved document]");
    window.show();
    return app.exec();
}
