#pragma once

#include <QtGlobal>

/// A fixture profile as a group of lights uses it.
struct GroupProfile
{
    /// 0..46; -1 where there is none.
    qint32 profileId = -1;
    quint8 forwardFlag = 0;
};
