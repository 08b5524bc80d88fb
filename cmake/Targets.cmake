add_library(fadewell_options INTERFACE)
target_compile_options(fadewell_options INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
    $<$<BOOL:${FADEWELL_FATAL_WARNINGS}>:-Werror>)
if(FADEWELL_SANITIZER)
    target_compile_options(fadewell_options INTERFACE
        -fsanitize=${FADEWELL_SANITIZER} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(fadewell_options INTERFACE -fsanitize=${FADEWELL_SANITIZER})
endif()

# fadewell_library(NAME folder SOURCES … LINKS … [PRIVATE_LINKS …])
#
# One folder, one target. Its headers are included as "folder/Header.h" through a directory that
# holds a link to this one folder, so an include of a layer that is not linked fails the build.
function(fadewell_library)
    cmake_parse_arguments(ARG "" "NAME;FOLDER" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    set(include_dir ${CMAKE_BINARY_DIR}/include/${ARG_NAME})
    get_filename_component(parent ${include_dir}/${ARG_FOLDER} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${ARG_FOLDER} ${include_dir}/${ARG_FOLDER} SYMBOLIC)
    add_library(fadewell_${ARG_NAME} STATIC ${ARG_SOURCES})
    target_include_directories(fadewell_${ARG_NAME} PUBLIC ${include_dir})
    target_link_libraries(fadewell_${ARG_NAME} PUBLIC ${ARG_LINKS} PRIVATE fadewell_options ${ARG_PRIVATE_LINKS})
endfunction()

# fadewell_test(NAME name SOURCES … LINKS … [LABEL label] [TIMEOUT seconds])
# One executable of GoogleTest cases.
function(fadewell_test)
    cmake_parse_arguments(ARG "" "NAME;TIMEOUT;LABEL" "SOURCES;LINKS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    if(NOT ARG_LABEL)
        set(ARG_LABEL unit)
    endif()
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    target_include_directories(${ARG_NAME} PRIVATE ${CMAKE_BINARY_DIR}/include/tests)
    target_link_libraries(${ARG_NAME} PRIVATE fadewell_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
    set_target_properties(${ARG_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    # One entry an executable: starting a process for each case would cost more than the cases.
    add_test(NAME ${ARG_NAME} COMMAND ${ARG_NAME})
    set_tests_properties(${ARG_NAME} PROPERTIES TIMEOUT ${ARG_TIMEOUT} LABELS ${ARG_LABEL})
endfunction()

# fadewell_qml_module(TARGET target URI uri …) adds a QML module to a library of the same folder; what
# follows goes to qt_add_qml_module.
function(fadewell_qml_module)
    cmake_parse_arguments(ARG "" "TARGET;URI" "" ${ARGN})
    string(REPLACE "." "/" folder ${ARG_URI})
    qt_add_qml_module(${ARG_TARGET} URI ${ARG_URI} VERSION 1.0 NO_PLUGIN RESOURCE_PREFIX /qml
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder} IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
        ${ARG_UNPARSED_ARGUMENTS})
    # What Qt generates from QML is not written for our warnings.
    get_target_property(sources ${ARG_TARGET} SOURCES)
    list(FILTER sources INCLUDE REGEX "qmlcache|qmltyperegistrations")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
