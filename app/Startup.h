#pragma once

/// Runs the whole program, from the application object to the end of its event loop; the result is
/// the process's exit status. Ends the process itself on a bad option and on --help.
int startForge(int& argc, char** argv);
