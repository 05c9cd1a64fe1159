#pragma once

#include "output/TalvisPacket.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <array>

class QHostAddress;
class TalvisSocket;

/// One entry of a scan reply; `size` is in bytes. Named by a signal and filled by nothing here.
// NOLINTNEXTLINE(readability-identifier-naming): the name is the protocol's
struct BlinkScan2_Reply_Entry
{
    quint8 port;
    quint8 kind;
    quint8 size;
    quint8 reserved;
};

/// Builds and sends the packets that controllers take, and decodes whatever devices send back into
/// signals. Every argument of a signal that is a pointer or a reference lives for the emission
/// only.
class Talvis : public QObject
{
    Q_OBJECT
public:
    /// With a socket of its own. Sends five syncs at once.
    explicit Talvis(QObject* parent = nullptr);
    /// With the socket given, which is owned from then on. Without one every send answers false.
    Talvis(TalvisSocket* socket, QObject* parent);

    TalvisSocket* socket() const { return m_socket; }

    /// A DMX frame to one address. More than 512 slots are cut to 512, with a line in the debug
    /// log, and the answer is then false although the frame went out; otherwise the answer is the
    /// socket's. A length below 0 counts as 0.
    bool sendDmxOut(const char* ip, quint8 startCode, quint16 timerVal, const void* data,
                    int length);
    /// The same for the frame loop, with the address ready.
    bool sendDmxOut(const QHostAddress& ip, quint8 startCode, quint16 timerVal, const void* data,
                    int length);
    /// A DMX frame to the broadcast address. The length isn't cut; false for one that doesn't fit
    /// the 2048 bytes of a packet.
    bool broadcastDmxOut(quint32 universe, quint8 startCode, quint16 timerVal, const void* data,
                         quint32 length);
    /// A port frame to one address; cut like a DMX frame.
    bool sendPortOut(const char* ip, quint32 universe, quint8 port, quint16 flags, quint32 length,
                     quint16 startCode, const void* data);
    /// The same for the frame loop, with the address ready.
    bool sendPortOut(const QHostAddress& ip, quint32 universe, quint8 port, quint16 flags,
                     quint32 length, quint16 startCode, const void* data);
    /// A port frame to the broadcast address; the length as in broadcastDmxOut.
    bool broadcastPortOut(quint32 universe, quint8 port, quint16 flags, quint32 length,
                          quint16 startCode, const void* data);
    /// A sync to the broadcast address.
    void sendSync();

signals:
    // Addresses are IPv4 numbers: the one that the device names, or else the sender's.

    /// A device tells who it is: `mac` is 6 bytes, the texts end in a NUL.
    void signalDiscoverResponse(char* mac, uint ip, uint sn, ushort ver, uint uni, char* verstring,
                                char* idstring);
    /// The same, from the other kind of device.
    void signalDiscoverEOResponse(char* mac, uint ip, uint sn, ushort ver, uint uni,
                                  char* verstring, char* idstring);
    /// The ports of a controller: number and type of each, `portcount` bytes in both arrays.
    void signalDiscoverPortsResponse(uint ip, uchar portcount, unsigned char* portnums,
                                     unsigned char* porttypes);
    /// A scan found the fixture of this serial number.
    void signalBlinkScanResponse(uint ip, uint sn);
    /// Part of the protocol; never emitted.
    void signalBlinkScan2Response(uint ip, uchar entryCount, uchar more,
                                  BlinkScan2_Reply_Entry* entryArray);
    /// The serial numbers that a scan found on a port; the count is that of the list.
    void signalBlinkScan2SNResponse(uint ip, uchar portNum, uchar snCount, QVector<quint64> sn);
    /// The same, from the other kind of scan.
    void signalBlinkScan2CAResponse(uint ip, uchar portNum, uchar fixtureCount,
                                    QVector<quint64> sn);
    /// The 48-bit RDM identifiers that a scan found on a port.
    void signalBlinkScan2TalvisRDMResponse(uint ip, uchar portNum, QVector<quint64> sn);
    /// The two ports that a scan of that kind names.
    void signalCAScanResponse(uint ip, uchar port1, uchar port2);
    /// The 6 bytes of a serial number, in the reverse of their order on the wire.
    void signalBEBlinkScanResponse(uint ip, uchar port, unsigned char* sn);
    /// The byte `b` at `addr` of a fixture's memory.
    void signalBlinkEEReadResponse(uint ip, uint sn, uchar addr, uchar b);
    /// The byte of a token of one pixel, 1 to 9.
    void signalPixelTokenByteReadResponse(uint ip, uint sn, uchar pixel, uchar token,
                                          uchar byteVal);
    /// A byte of telemetry.
    void signalTelemetryByteReadResponse(uint ip, uint sn, ushort telemetryID, uchar byteVal);
    /// The byte of a token in a fixture's extended memory.
    void signalExtPromTokenReadResponse(uint ip, uint sn, ushort token, uchar byteVal);
    /// A number that a controller keeps.
    void signalDeviceVariableReply(uint ip, ushort valueID, uint value);
    /// A list of numbers that a controller keeps, at most as many as a datagram holds.
    void signalGetArrayReply(uint ip, uint valueID, QVector<quint32>& getValues);
    /// The same, of bytes.
    void signalGetByteArrayReply(uint ip, uint valueID, QVector<quint8>& getValues);
    /// As signalDiscoverResponse, with a serial number of 64 bits.
    void signalDiscoverResponseV3(char* mac, uint ip, qulonglong sn, ushort ver, uint uni,
                                  char* verstring, char* idstring);
    /// An RDM parameter as text; `sn` is the 48-bit identifier of the device that answers.
    void signalRDMGetReply(uint ip, qulonglong sn, ushort pid, QString value);
    /// Asks for a sync, from another thread if need be.
    void requestSyncPacket();
    /// Asks for sendPortOut with these arguments, from another thread if need be; what the pointers
    /// point at must then outlive the send.
    void requestSendPortOut(const char* ip, uint uni, uchar port, uint flags, uint len,
                            uint startcode, const unsigned char* data);

public slots:
    /// Reads and decodes until no datagram is pending or a read fails.
    void checkSocket();
    void handleSyncPacketRequest();
    void handleSendPortOutRequest(const char* ip, uint uni, uchar port, uint flags, uint len,
                                  uint startcode, const unsigned char* data);

private:
    template <class Address>
    bool sendDmxFrame(const Address& ip, quint8 startCode, quint16 timerVal, const void* data,
                      int length);
    template <class Address>
    bool sendPortFrame(const Address& ip, quint32 universe, quint8 port, quint16 flags,
                       quint32 length, quint16 startCode, const void* data);
    bool transmit(const char* ip);
    bool transmit(const QHostAddress& ip);
    bool broadcast();

    TalvisSocket* m_socket = nullptr; // owned, as a child
    TalvisPacket m_packet;
    std::array<char, 4096> m_received{}; // never cleared: a short datagram leaves the one before
};
