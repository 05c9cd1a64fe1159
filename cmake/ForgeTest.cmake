# forge_add_test(<folder> <Class> [NAMESPACE | ETH0 | DISPLAY] [NO_SANITIZE] [LIBS libs...]
#                [DEPENDS targets...])
# tests/<folder>/<Class>Test.cpp becomes the test <folder>.<Class>. NAMESPACE runs it in a network
# namespace of its own, ETH0 in one that has an interface "eth0" too; where the system allows none,
# it is reported as skipped with that reason. DISPLAY runs it on a virtual display of its own.
# NO_SANITIZE leaves it out of the sanitizer build (allocation counts, for one).
function(forge_add_test folder class)
    cmake_parse_arguments(PARSE_ARGV 2 arg "NAMESPACE;ETH0;DISPLAY;NO_SANITIZE" "" "LIBS;DEPENDS")
    if(arg_NO_SANITIZE AND FORGE_SANITIZE)
        return()
    endif()
    set(name ${class}Test)
    if(TARGET ${name}) # the same class name in two folders
        set(name ${folder}_${class}Test)
    endif()
    add_executable(${name} ${class}Test.cpp)
    set_target_properties(${name} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/${folder})
    if(TARGET forge_${folder})
        target_link_libraries(${name} PRIVATE forge_${folder})
    endif()
    target_link_libraries(${name} PRIVATE forge_options Qt5::Test ${arg_LIBS})
    # A test's own code need not be fast, but there is much of it to compile.
    target_compile_options(${name} PRIVATE -O0)
    target_compile_definitions(${name} PRIVATE
        FORGE_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        FORGE_BINARY_DIR="${PROJECT_BINARY_DIR}"
        FORGE_TEST_DIR="${PROJECT_BINARY_DIR}/tests/${folder}")
    if(arg_DEPENDS)
        add_dependencies(${name} ${arg_DEPENDS})
    endif()
    set(home ${PROJECT_BINARY_DIR}/tests/home/${folder}.${class})
    set(command $<TARGET_FILE:${name}>)
    if(arg_NAMESPACE)
        set(command ${PROJECT_SOURCE_DIR}/tests/in-namespace.sh ${command})
    elseif(arg_ETH0)
        set(command ${PROJECT_SOURCE_DIR}/tests/in-namespace.sh --eth0 ${command})
    elseif(arg_DISPLAY)
        set(command ${PROJECT_SOURCE_DIR}/tests/on-display.sh ${command})
    endif()
    add_test(NAME ${folder}.${class} COMMAND ${command})
    set_tests_properties(${folder}.${class} PROPERTIES
        TIMEOUT 300
        SKIP_RETURN_CODE 77
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=UTC;LC_ALL=C.UTF-8;QT_STYLE_OVERRIDE=fusion;XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_RUNTIME_DIR=${home}/run;ASAN_OPTIONS=detect_stack_use_after_return=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1")
    file(MAKE_DIRECTORY ${home}/config ${home}/data ${home}/run)
    file(CHMOD ${home}/run PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endfunction()
