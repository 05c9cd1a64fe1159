#include "app/Startup.h"

int main(int argc, char** argv)
{
    return startForge(argc, argv);
}
