#include "tools/listen/FrameLedger.h"
#include "tools/listen/ListenOptions.h"
#include "tools/listen/ListenReport.h"
#include "tools/listen/ListenSocket.h"
#include "tools/listen/LiveView.h"

#include <QByteArray>
#include <QJsonDocument>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <memory>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kExitHeard = 0;
constexpr int kExitSilence = 1;
constexpr int kExitUsage = 2;
constexpr std::chrono::milliseconds kRedraw(100);

volatile std::sig_atomic_t interrupted = 0;

void handleInterrupt(int)
{
    interrupted = 1;
}

void print(std::FILE* stream, const QByteArray& bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

void redraw(const FrameLedger& ledger)
{
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now); // the clock of the arrival times
    const qint64 nowNs = static_cast<qint64>(now.tv_sec) * 1000000000 + now.tv_nsec;
    print(stdout,
          LiveView::draw(ledger, nowNs, known ? size.ws_col : 80, known ? size.ws_row : 24));
}

using Sockets = std::vector<std::unique_ptr<ListenSocket>>;

bool openAll(const QVector<quint32>& addresses, Sockets* sockets)
{
    for (const quint32 address : addresses) {
        QString error;
        sockets->push_back(std::make_unique<ListenSocket>());
        if (!sockets->back()->open(address, &error)) {
            print(stderr, QStringLiteral("forge-listen: can't listen at %1 port %2: %3\n")
                              .arg(ipText(address))
                              .arg(ListenSocket::kPort)
                              .arg(error)
                              .toLocal8Bit());
            return false;
        }
        print(stderr, QStringLiteral("Listening at %1 port %2\n")
                          .arg(ipText(address))
                          .arg(ListenSocket::kPort)
                          .toLocal8Bit());
    }
    return true;
}

/// Until the time is over or somebody interrupts. Answers for how many seconds that was.
double listen(const Sockets& sockets, double seconds, bool live, FrameLedger* ledger)
{
    std::vector<pollfd> polls;
    for (const auto& socket : sockets) {
        polls.push_back({socket->descriptor(), POLLIN, 0});
    }
    const auto hear = [ledger](const HeardDatagram& datagram) { ledger->hear(datagram); };
    const auto receiveAll = [&sockets, &hear] {
        for (const auto& socket : sockets) {
            socket->receive(hear);
        }
    };
    const Clock::time_point start = Clock::now();
    Clock::time_point nextDraw = start;
    double elapsed = 0.0;
    while (interrupted == 0 && (seconds <= 0.0 || elapsed < seconds)) {
        int waitMs = static_cast<int>(kRedraw.count());
        if (seconds > 0.0 && (seconds - elapsed) * 1000.0 < waitMs) {
            waitMs = static_cast<int>((seconds - elapsed) * 1000.0) + 1;
        }
        if (poll(polls.data(), polls.size(), waitMs) > 0) {
            receiveAll();
        }
        const Clock::time_point now = Clock::now();
        elapsed = std::chrono::duration<double>(now - start).count();
        if (live && now >= nextDraw) {
            redraw(*ledger);
            nextDraw = now + kRedraw;
        }
    }
    receiveAll(); // what came before the end
    return elapsed;
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    ListenOptions options;
    QString error;
    if (!ListenOptions::parse(arguments, &options, &error)) {
        print(stderr, QStringLiteral("forge-listen: %1\n\n").arg(error).toLocal8Bit());
        print(stderr, ListenOptions::usage().toLocal8Bit());
        return kExitUsage;
    }
    if (options.help) {
        print(stdout, ListenOptions::usage().toLocal8Bit());
        return kExitHeard;
    }

    struct sigaction action = {};
    action.sa_handler = handleInterrupt;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    Sockets sockets;
    if (!openAll(options.addresses, &sockets)) {
        return kExitUsage;
    }

    FrameLedger ledger;
    const bool live = !options.json && isatty(STDOUT_FILENO) == 1;
    if (live) {
        print(stdout, LiveView::enter());
    }
    ListenRun run;
    run.addresses = options.addresses;
    run.seconds = listen(sockets, options.seconds, live, &ledger);
    for (const auto& socket : sockets) {
        run.dropped += socket->dropped();
    }
    if (live) {
        print(stdout, LiveView::leave());
    }
    print(stdout, options.json ? QJsonDocument(ListenReport::json(ledger, run)).toJson()
                               : ListenReport::text(ledger, run).toUtf8());
    return ledger.totals().frames > 0 ? kExitHeard : kExitSilence;
}
