# One static library for each folder of src/. What it may include is what it links: the arrows of
# docs/architecture.md stand in the LINKS of each call and nowhere else.

# zalmo_library(NAME LINKS target... PRIVATE target...)   every .cpp of the folder; PRIVATE: used in no header
function(zalmo_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINKS;PRIVATE")
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_library(zalmo_${name} STATIC ${sources})
    set_target_properties(zalmo_${name} PROPERTIES LINKER_LANGUAGE CXX)
    # Otherwise a new header goes unnoticed by moc until some other one changes.
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/zalmo_${name}_autogen/timestamp)
    target_include_directories(zalmo_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(zalmo_${name} PUBLIC ${arg_LINKS} PRIVATE ${arg_PRIVATE})
    target_compile_definitions(zalmo_${name} PRIVATE ${ZALMO_STRICT_TEXT})
endfunction()

# zalmo_headers(target...)   compiles each header alone that no source file includes first. Not part of a build of all.
function(zalmo_headers)
    file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/src/*.h)
    set(sources "")
    foreach(header IN LISTS headers)
        string(REGEX REPLACE "h$" "cpp" source ${header})
        if(NOT EXISTS ${PROJECT_SOURCE_DIR}/src/${source})
            file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/headers/${source} CONTENT "#include \"${header}\"\n")
            list(APPEND sources ${PROJECT_BINARY_DIR}/generated/headers/${source})
        endif()
    endforeach()
    add_library(zalmo_headers OBJECT EXCLUDE_FROM_ALL ${sources})
    set_target_properties(zalmo_headers PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(zalmo_headers PRIVATE ${ARGV})
    target_compile_definitions(zalmo_headers PRIVATE ${ZALMO_STRICT_TEXT})
endfunction()

# zalmo_test(NAME [DISPLAY] SOURCES file... LINKS target...)
# DISPLAY: the test makes windows or a web page; it runs on Qt's offscreen platform. All others are tests of the logic.
function(zalmo_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DISPLAY" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} Qt6::Test)
    add_test(NAME ${name} COMMAND ${name})
    set(environment "LC_ALL=C.UTF-8")
    set(label logic)
    if(arg_DISPLAY)
        # Nothing answers on that port, so pictures from the web stay there.
        list(APPEND environment "QT_QPA_PLATFORM=offscreen" "QTWEBENGINE_DISABLE_SANDBOX=1"
            "QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu --proxy-server=127.0.0.1:9")
        set(label display)
    else()
        set_property(GLOBAL APPEND PROPERTY ZALMO_LOGIC_TESTS ${name})
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT "${environment}" LABELS ${label})
endfunction()
