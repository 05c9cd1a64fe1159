#pragma once

/// Makes the compiled-in files (pictures, icons, fixture profiles, device files, property maps)
/// available under ":/". Safe to call more than once; nothing is read before it was called.
void initForgeResources();
