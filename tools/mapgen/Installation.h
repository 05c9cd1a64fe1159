#pragma once

#include <QString>
#include <QVector>

/// One device property of the map file: a token and its raw number.
struct PropertySpec
{
    QString token;
    quint32 value = 0;
};

/// One data port of a controller as the map file lists it.
struct PortSpec
{
    int number = 1; // 1 to 255, as printed on the housing
    int type = 1;
    int flags = 0;
};

struct ControllerSpec
{
    enum Kind { Ip = 2, Broadcast = 3 };
    quint64 uid = 0;
    int kind = Ip;
    QString name;
    QString address; // empty for a broadcast controller
    QString macAddress;
    quint64 serialNumber = 0;
    int version = 2; // protocol generation, 1 to 3
    quint32 universe = 0;
    bool missing = false;
    QVector<PortSpec> ports;
    QVector<PropertySpec> properties;
    QVector<quint64> lightUids;
};

struct LightSpec
{
    quint64 uid = 0;
    QString name;
    quint64 controllerUid = 0;
    int port = 0;      // index of the port, counted from 0
    int channel = 0;   // first byte on that port, counted from 0
    int footprint = 0; // bytes on that port; not written, readers work it out
    quint64 serialNumber = 0;
    quint32 number = 0;
    int fixtureCode = 0;
    int ioMode = 0;
    double x = 0.0; // map units; the shape on the plan stands at (x + 10, y + 10)
    double y = 0.0;
    QVector<PropertySpec> properties;
};

struct GroupSpec
{
    enum Kind { Chasing = 1, Synchronized = 2, Leaf = 3 };
    quint64 uid = 0;
    int kind = Synchronized;
    QString name;
    QVector<quint64> children;
};

/// All that a map file says about an installation.
struct Installation
{
    QString imageFile; // as it shall stand in the map: readers take it relative to where they run
    bool postSync = false;
    QVector<ControllerSpec> controllers;
    QVector<LightSpec> lights;
    QVector<GroupSpec> groups;
};
