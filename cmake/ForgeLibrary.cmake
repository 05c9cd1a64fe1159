# forge_library(<folder> SOURCES ... HEADERS ... [PUBLIC libs...] [PRIVATE libs...])
# One static library forge_<folder> for a root folder. HEADERS are compiled by themselves by the
# target all_verify_interface_header_sets.
function(forge_library folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;PUBLIC;PRIVATE")
    set(name forge_${folder})
    add_library(${name} STATIC ${arg_SOURCES})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
    if(arg_HEADERS)
        target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}
            FILES ${arg_HEADERS})
    endif()
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE forge_options ${arg_PRIVATE})
endfunction()
