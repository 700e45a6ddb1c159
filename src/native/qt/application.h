#pragma once

#include <QApplication>

namespace quorvel::qt {

/// The toolkit's application, which also tells whether an event is being handled.
class Application final : public QApplication {
 public:
  Application(int& argc, char** argv) : QApplication(argc, argv) {}

  [[nodiscard]] bool Handling() const { return depth > 0; }
  bool notify(QObject* receiver, QEvent* event) override;

 private:
  int depth = 0;
};

}  // namespace quorvel::qt
