// The least that a desktop program of the toolkit can be, as a measure for the start and the memory
// of the program: one empty window of the size of the log window.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  window.setWindowTitle("Listening to nothing");
  window.resize(620, 420);
  window.show();
  return QApplication::exec();
}
