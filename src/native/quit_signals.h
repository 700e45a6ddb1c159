#pragma once

namespace quorvel {

/// Turns the first SIGTERM or SIGINT into a descriptor that has something to read. From then on
/// both signals end the process, as they do without this object. A signal that the process was
/// started to ignore stays ignored. One object at a time.
class QuitSignals {
 public:
  QuitSignals();
  /// Gives both signals back what they did before.
  ~QuitSignals();
  QuitSignals(const QuitSignals&) = delete;
  QuitSignals& operator=(const QuitSignals&) = delete;

  /// Readable, for good, once a signal has come. Owned by this object; -1 when the system had no
  /// pipe to give, and the signals end the process.
  [[nodiscard]] int Descriptor() const;
};

}  // namespace quorvel
