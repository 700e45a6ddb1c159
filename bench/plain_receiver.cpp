// A receiver in the manner of a first draft with the toolkit: readyRead of a QUdpSocket,
// receiveDatagram for each datagram, the mirror, and a QString for the log. One packet in each
// datagram, no window, no reassembly. The arguments are the group and the name of the interface.
// At SIGTERM the receiver prints a report and ends.

#include <sys/signalfd.h>

#include <QCoreApplication>
#include <QHostAddress>
#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QSocketNotifier>
#include <QUdpSocket>
#include <csignal>

#include "messaging/channel.h"
#include "report.h"

namespace {

constexpr int kHeaderSize = 8;

QChar Mirrored(QChar character) {
  const auto within = [&](char first, char last) {
    return character >= QLatin1Char(first) && character <= QLatin1Char(last);
  };
  const auto turned = [&](char first, char last) {
    return QChar(first + last - character.unicode());
  };
  if (within('a', 'z')) return turned('a', 'z');
  if (within('A', 'Z')) return turned('A', 'Z');
  if (within('0', '9')) return turned('0', '9');
  return character;
}

QString Line(const QNetworkDatagram& datagram) {
  QString text = QString::fromUtf8(datagram.data().mid(kHeaderSize));
  for (QChar& character : text) character = Mirrored(character);
  return "IP Address: " + datagram.senderAddress().toString() + " Sent: " + text + "\n";
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  sigset_t end{};
  sigaddset(&end, SIGTERM);
  sigprocmask(SIG_BLOCK, &end, nullptr);
  const QSocketNotifier ended(signalfd(-1, &end, 0), QSocketNotifier::Read);
  QObject::connect(&ended, &QSocketNotifier::activated, &application, &QCoreApplication::quit);

  QUdpSocket socket;
  QString log;
  int64_t messages = 0;
  QObject::connect(&socket, &QUdpSocket::readyRead, &socket, [&] {
    while (socket.hasPendingDatagrams()) {
      log += Line(socket.receiveDatagram());
      ++messages;
    }
  });
  const bool joined = socket.bind(QHostAddress(QHostAddress::AnyIPv4), quorvel::kPort) &&
                      socket.joinMulticastGroup(QHostAddress(QString(argv[1])),
                                                QNetworkInterface::interfaceFromName(argv[2]));
  if (!joined) return 1;
  QCoreApplication::exec();
  quorvel::bench::PrintReport(messages, static_cast<size_t>(log.size()));
}
