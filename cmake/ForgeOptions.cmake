# What every target of ours is compiled with. Linked PRIVATE, so that nothing leaks to others.
option(FORGE_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)

add_library(forge_options INTERFACE)
target_compile_features(forge_options INTERFACE cxx_std_17)
target_compile_options(forge_options INTERFACE
    -ffp-contract=off # each operation rounded by itself, as the fixtures do
    -Werror -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wcast-qual
    -Wnon-virtual-dtor -Woverloaded-virtual -Wsuggest-override -Wduplicated-cond -Wlogical-op)
target_compile_definitions(forge_options INTERFACE
    QT_NO_CAST_TO_ASCII QT_RESTRICTED_CAST_FROM_ASCII QT_NO_FOREACH QT_STRICT_ITERATORS
    QT_NO_JAVA_STYLE_ITERATORS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_MESSAGELOGCONTEXT)
target_include_directories(forge_options INTERFACE ${PROJECT_SOURCE_DIR})

if(FORGE_SANITIZE)
    # float-cast-overflow is not part of "undefined", and it is the one that hostile files reach.
    set(forge_sanitizers -fsanitize=address,undefined,float-cast-overflow
        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(forge_options INTERFACE ${forge_sanitizers}
        -O1 -g1 # lines for the reports; more of either takes its time to compile
        -Wno-maybe-uninitialized) # false alarms under instrumentation
    target_link_options(forge_options INTERFACE ${forge_sanitizers})
    target_compile_definitions(forge_options INTERFACE FORGE_SANITIZE)
endif()
