#pragma once

#include "output/TalvisSocket.h"

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

class QTcpSocket;
class QUdpSocket;

/// The times of the pause channel, in milliseconds.
struct CommPeriods
{
    int discovery = 5000;   ///< how long answers are taken
    int pause = 15000;      ///< between two pause commands
    int connectWait = 1000; ///< how long one answerer may hold up the program
};

/// Finds the management services on the local networks and tells them to pause their controllers,
/// for as long as it lives. Looks once, in its first seconds; failures are silent.
class CommLibrary : public QObject
{
    Q_OBJECT
public:
    using InterfaceSource = TalvisSocket::InterfaceSource;

    static constexpr quint16 kLocalPort = 8081;
    static constexpr quint16 kDiscoveryPort = 6775;
    /// How many answers of one discovery are followed, so that hosts that answer but accept no
    /// connection can't hold up the frames for long.
    static constexpr int kMaxAnswers = 32;

    /// Broadcasts on every network at once. `clientName` is how the program introduces itself.
    explicit CommLibrary(const QString& clientName, QObject* parent = nullptr,
                         const CommPeriods& periods = CommPeriods(),
                         InterfaceSource interfaces = &TalvisSocket::systemInterfaces);
    ~CommLibrary() override;

    /// Closes all connections and looks again. While a discovery runs, only lengthens it.
    void startDiscovery();
    int connectionCount() const { return m_connections.size(); }

public slots:
    /// Follows the answers that have come, up to a number: the rest waits for the next call. An
    /// answer behind the end of the discovery is left unread.
    void handleReadReady();
    void handlePauseControllers();

private:
    void handleAnswer(const QByteArray& datagram);
    void closeAll();

    QUdpSocket* m_udp = nullptr;
    QString m_clientName;
    QTimer m_pauseTimer{this};
    QTimer m_discoveryTimer{this};
    QHash<QString, QTcpSocket*> m_connections; // owned
    QSet<QHostAddress> m_answered;             // followed in this discovery
    int m_connectWait = 0;                     // milliseconds
    InterfaceSource m_interfaces;
};
