#include "resources/Resources.h"

#include <QDir>

void initForgeResources()
{
    // A static library's resources are linked only where they are named.
    Q_INIT_RESOURCE(pictures);
    Q_INIT_RESOURCE(devices);
    Q_INIT_RESOURCE(profiles);
}
