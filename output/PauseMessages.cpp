#include "output/PauseMessages.h"

#include <array>
#include <cstddef>

namespace {

constexpr char kForgeHead[] = "Content-Length: 516\r\n\r\n";
constexpr char16_t kForgeBody[] = u"<!DOCTYPE document>\n"
                                  u"<Envelope>\n"
                                  u" <Header>\n"
                                  u"  <SenderID>3166485691</SenderID>\n"
                                  u"  <TargetID>0</TargetID>\n"
                                  u"  <RequestID>0</RequestID>\n"
                                  u"  <Command>3</Command>\n"
                                  u" </Header>\n"
                                  u" <Body>\n"
                                  u"  <ID>3166485691</ID>\n"
                                  u"  <Name>Pageant Forge</Name>\n"
                                  u"  <Type>3</Type>\n"
                                  u" </Body>\n"
                                  u"</Envelope>\n";

constexpr char kStewardHead[] = "Content-Length: 520\r\n\r\n";
constexpr char16_t kStewardBody[] = u"<!DOCTYPE document>\n"
                                    u"<Envelope>\n"
                                    u" <Header>\n"
                                    u"  <SenderID>3166485692</SenderID>\n"
                                    u"  <TargetID>0</TargetID>\n"
                                    u"  <RequestID>0</RequestID>\n"
                                    u"  <Command>3</Command>\n"
                                    u" </Header>\n"
                                    u" <Body>\n"
                                    u"  <ID>3166485692</ID>\n"
                                    u"  <Name>Pageant Steward</Name>\n"
                                    u"  <Type>3</Type>\n"
                                    u" </Body>\n"
                                    u"</Envelope>\n";

constexpr char kPauseHead[] = "Content-Length: 368\r\n\r\n";
constexpr char16_t kPauseBody[] = u"<!DOCTYPE document>\n"
                                  u"<Envelope>\n"
                                  u" <Header>\n"
                                  u"  <SenderID>3166485691</SenderID>\n"
                                  u"  <TargetID>0</TargetID>\n"
                                  u"  <RequestID>0</RequestID>\n"
                                  u"  <Command>113</Command>\n"
                                  u" </Header>\n"
                                  u" <Body/>\n"
                                  u"</Envelope>\n";

template <std::size_t Units>
constexpr std::size_t bodyBytes(const char16_t (&)[Units])
{
    return 2 * (Units - 1); // without the terminator
}

// The heads name these lengths.
static_assert(bodyBytes(kForgeBody) == 516);
static_assert(bodyBytes(kStewardBody) == 520);
static_assert(bodyBytes(kPauseBody) == 368);

template <std::size_t HeadSize, std::size_t Units>
constexpr auto wireBytes(const char (&head)[HeadSize], const char16_t (&body)[Units])
{
    std::array<char, HeadSize - 1 + 2 * (Units - 1)> bytes{};
    std::size_t at = 0;
    for (std::size_t i = 0; i + 1 < HeadSize; ++i) {
        bytes[at++] = head[i];
    }
    for (std::size_t i = 0; i + 1 < Units; ++i) {
        bytes[at++] = static_cast<char>(body[i] & 0xFF);
        bytes[at++] = static_cast<char>(body[i] >> 8);
    }
    return bytes;
}

constexpr auto kForgeHello = wireBytes(kForgeHead, kForgeBody);
constexpr auto kStewardHello = wireBytes(kStewardHead, kStewardBody);
constexpr auto kPause = wireBytes(kPauseHead, kPauseBody);

/// Over the constant itself, without a copy.
template <std::size_t Size>
QByteArray wrapped(const std::array<char, Size>& bytes)
{
    return QByteArray::fromRawData(bytes.data(), static_cast<int>(Size));
}

} // namespace

QByteArray PauseMessages::hello(const QString& clientName)
{
    return clientName == QLatin1String("Pageant Steward") ? wrapped(kStewardHello)
                                                          : wrapped(kForgeHello);
}

QByteArray PauseMessages::pause()
{
    return wrapped(kPause);
}
