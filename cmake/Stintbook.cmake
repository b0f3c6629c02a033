include(GoogleTest)

# A folder sees another one only through an include root that holds nothing but that folder. So
# #include "Domain/LocalDay.h" compiles only in targets that depend on Domain, directly or through others.
function(stintbook_include_root target path outRoot)
    set(root "${CMAKE_BINARY_DIR}/include/${target}")
    cmake_path(GET path PARENT_PATH parent)
    file(MAKE_DIRECTORY "${root}/${parent}")
    if(NOT IS_SYMLINK "${root}/${path}")
        file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${path}" SYMBOLIC)
    endif()
    set(${outRoot} "${root}" PARENT_SCOPE)
endfunction()

# The .cpp files of the current folder and its subfolders, except those with a CMakeLists.txt of their own.
function(stintbook_sources outSources)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "*.cpp")
    file(GLOB_RECURSE nested "*/CMakeLists.txt")
    foreach(list IN LISTS nested)
        cmake_path(GET list PARENT_PATH folder)
        if(NOT folder STREQUAL CMAKE_CURRENT_SOURCE_DIR)
            list(FILTER sources EXCLUDE REGEX "^${folder}/")
        endif()
    endforeach()
    set(${outSources} "${sources}" PARENT_SCOPE)
endfunction()

# stintbook_library(Name [AS PATH] [DEPENDS folders…] [EXTERNAL libraries…] [EXTERNAL_PUBLIC libraries…] [EXCEPT files…])
#
# The current folder as a static library, or as an interface when it holds headers only. Subfolders belong to
# it, except those with a CMakeLists.txt of their own. Included as PATH/…, which is the name unless said
# otherwise. EXTERNAL_PUBLIC are the libraries that the folder's headers show; EXCEPT leaves sources out.
function(stintbook_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "AS" "DEPENDS;EXTERNAL;EXTERNAL_PUBLIC;EXCEPT")
    if(NOT arg_AS)
        set(arg_AS "${name}")
    endif()

    stintbook_sources(sources)
    foreach(file IN LISTS arg_EXCEPT)
        list(REMOVE_ITEM sources "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
    endforeach()

    stintbook_include_root(${name} "${arg_AS}" root)
    if(sources)
        add_library(${name} STATIC ${sources})
        target_include_directories(${name} PUBLIC "${root}")
        target_link_libraries(${name} PUBLIC ${arg_DEPENDS} ${arg_EXTERNAL_PUBLIC} PRIVATE ${arg_EXTERNAL})
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE "${root}")
        target_link_libraries(${name} INTERFACE ${arg_DEPENDS} ${arg_EXTERNAL_PUBLIC})
    endif()
endfunction()

# stintbook_test(Folder [DEPENDS targets…] [CONCURRENT filters…] [LABELS labels…] [TIMEOUT seconds] [PROCESS] [SERIAL])
#
# The current folder as <Folder>Tests, linked with the source folder of that name, if there is one, with
# DEPENDS and with TestSupport. CONCURRENT are the gtest filters (as Executor.*) of tests that run threads:
# they are labelled "concurrent" and also run under the thread sanitizer. PROCESS tests start velloran-cli:
# its path stands in the environment variable VELLORAN_CLI. SERIAL tests run beside no other test. The labels
# "desktop" and "measured" (time, memory, wake-ups) keep tests out of the runs under sanitizers.
function(stintbook_test folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "PROCESS;SERIAL" "TIMEOUT" "DEPENDS;CONCURRENT;LABELS")
    stintbook_sources(sources)
    if(NOT sources)
        return()
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()

    set(target ${folder}Tests)
    add_executable(${target} ${sources})
    target_link_libraries(${target} PRIVATE TestSupport)
    if(TARGET ${folder})
        target_link_libraries(${target} PRIVATE ${folder})
    endif()
    target_link_libraries(${target} PRIVATE ${arg_DEPENDS} GTest::gmock_main)
    target_compile_definitions(${target} PRIVATE STINTBOOK_SOURCE_DIRECTORY="${PROJECT_SOURCE_DIR}")

    set(properties TIMEOUT ${arg_TIMEOUT})
    if(arg_SERIAL)
        list(APPEND properties RUN_SERIAL TRUE)
    endif()
    if(arg_PROCESS)
        add_dependencies(${target} velloran-cli)
        list(APPEND properties ENVIRONMENT "VELLORAN_CLI=$<TARGET_FILE:velloran-cli>")
        list(APPEND arg_LABELS process)
    endif()

    if(arg_CONCURRENT)
        list(JOIN arg_CONCURRENT ":" concurrent)
        add_dependencies(concurrent-tests ${target})
        gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 TEST_LIST ${target}Concurrent
            TEST_FILTER "${concurrent}" PROPERTIES ${properties} LABELS concurrent)
        set(others TEST_FILTER "-${concurrent}")
    endif()
    if(arg_LABELS)
        list(GET arg_LABELS 0 label)
        list(APPEND properties LABELS ${label})
    endif()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 ${others} PROPERTIES ${properties})
endfunction()

# stintbook_fuzz(Name [DEPENDS targets…] [RUNS count])
#
# <Name>Fuzz from Tests/Fuzz/<Name>Fuzz.cpp, which defines LLVMFuzzerTestOneInput; its seeds lie in
# Tests/Fuzz/Corpus/<Name>. In the preset "fuzz" libFuzzer drives it, for as long as one likes; in all others a
# driver of our own replays the seeds and RUNS mutations of them (20000, always the same), as a test.
function(stintbook_fuzz name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "RUNS" "DEPENDS")
    set(target ${name}Fuzz)
    set(corpus "${CMAKE_CURRENT_SOURCE_DIR}/Corpus/${name}")
    add_executable(${target} ${name}Fuzz.cpp)
    target_link_libraries(${target} PRIVATE ${arg_DEPENDS} FuzzDriver)
    add_dependencies(fuzz-targets ${target})
    if(STINTBOOK_LIBFUZZER)
        set(found "${CMAKE_BINARY_DIR}/corpus/${name}")
        file(MAKE_DIRECTORY "${found}")
        add_test(NAME ${target} COMMAND ${target} -max_total_time=60 "${found}" "${corpus}")
    else()
        add_test(NAME ${target} COMMAND ${target} "${corpus}" ${arg_RUNS})
    endif()
    set_tests_properties(${target} PROPERTIES LABELS fuzz TIMEOUT 120)
endfunction()

# stintbook_benchmark(Name [DEPENDS targets…]): Benchmarks/<Name>.cpp, run by hand.
function(stintbook_benchmark name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DEPENDS")
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_DEPENDS} benchmark::benchmark_main)
endfunction()
