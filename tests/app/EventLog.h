#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
// The sanitizer's own name; its header may be absent. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" void __sanitizer_set_death_callback(void (*callback)());
#endif

/// The seed and the last events of a run, which are told where it fails: by a check, a crash or a
/// hang. One for the process; no allocation is needed to tell them.
class EventLog
{
public:
    static constexpr int kKept = 50;
    static constexpr int kWidth = 200;
    /// Longer than any event takes, under the sanitizers too.
    static constexpr int kHangSeconds = 60;

    static EventLog& instance()
    {
        static EventLog log;
        return log;
    }
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    void start(unsigned seed)
    {
        m_seed = seed;
        m_count = 0;
    }
    void stop() { m_count = 0; }
    void add(const QString& event)
    {
        const int number = m_count;
        Line& line = m_lines[static_cast<std::size_t>(number % kKept)];
        const QByteArray text =
            QByteArray::number(number) + ' ' + event.left(kWidth).toLatin1().simplified();
        qstrncpy(line.data(), text.constData(), kWidth);
        m_count = number + 1;
    }
    void tell() const
    {
        const int count = m_count;
        if (count == 0) {
            return;
        }
        std::array<char, 32> head = {};
        qsnprintf(head.data(), head.size(), "seed %u\n", static_cast<unsigned>(m_seed));
        put(head.data());
        for (int i = count > kKept ? count - kKept : 0; i < count; ++i) {
            put(m_lines[static_cast<std::size_t>(i % kKept)].data());
            put("\n");
        }
    }

private:
    using Line = std::array<char, kWidth>;

    EventLog()
        : m_watch([this] { watch(); })
    {
#ifdef __SANITIZE_ADDRESS__
        __sanitizer_set_death_callback([] { instance().tell(); });
#else
        for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
            std::signal(number, die);
        }
#endif
        std::signal(SIGABRT, die);
    }
    ~EventLog()
    {
        m_ended = true;
        m_watch.join();
    }
    static void die(int number)
    {
        instance().tell();
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    static void put(const char* text)
    {
        const auto written = ::write(STDERR_FILENO, text, std::strlen(text));
        static_cast<void>(written);
    }
    void watch()
    {
        int last = 0;
        int still = 0;
        while (!m_ended) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            const int count = m_count;
            still = count == last || count == 0 ? still + 1 : 0;
            if (count == 0) {
                still = 0;
            }
            last = count;
            if (still > 10 * kHangSeconds) {
                put("hangs\n");
                std::abort();
            }
        }
    }

    std::array<Line, kKept> m_lines = {};
    std::atomic<unsigned> m_seed{0};
    std::atomic<int> m_count{0};
    std::atomic<bool> m_ended{false};
    std::thread m_watch; // last: it uses the others
};
