# How every target is compiled: all of them hardened, including GoogleTest; the project's own with warnings, and with a static
# runtime on Windows.

# The standard library checks indexes and preconditions; functions with arrays check their stack frames. The checked copying of
# _FORTIFY_SOURCE needs an optimising compiler, and a sanitizer does the same better: each would hide the other's findings. To
# the Windows headers level 3 means the same as 2. A compiler with a preset level would warn about another one.
add_compile_options(-fstack-protector-strong)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
if(NOT CMAKE_CXX_FLAGS MATCHES "sanitize")
    add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>")
endif()
if(WIN32)
    # The linker's defaults, spelt out in case another linker has different ones. Relocations make it possible to load the
    # program at any address, and addresses of more than 32 bits make it impossible to try out all of them. The option that
    # protects the stack also links the library that reports it.
    add_link_options(-fstack-protector-strong -Wl,--dynamicbase -Wl,--nxcompat)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        add_link_options(-Wl,--high-entropy-va)
    endif()
endif()

add_library(velbooter_options INTERFACE)
# GCC 12 reports std::string's own assignment as overlapping (its bug 105651), so this warning is off. Clang's -Wconversion
# includes signs, for which GCC has a separate option.
target_compile_options(velbooter_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion
                       $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)
target_include_directories(velbooter_options INTERFACE "${PROJECT_SOURCE_DIR}")
if(WIN32)
    target_compile_options(velbooter_options INTERFACE -ffunction-sections -fdata-sections)
    target_compile_definitions(velbooter_options INTERFACE WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX
                                                           WIN32_LEAN_AND_MEAN)
    target_link_options(velbooter_options INTERFACE -static -Wl,--gc-sections)
endif()

# velbooter_library(NAME SOURCE...): a static library with the project's warnings.
function(velbooter_library name)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PUBLIC velbooter_options)
endfunction()

# velbooter_program(NAME DESCRIPTION text [FILE name] [RESOURCES SCRIPT [DEPENDS FILE...]] SOURCE...): an executable in bin/
# of the build folder; on Windows stripped, with the project's icon, manifest and version, and named FILE, by default
# NAME.exe. A leading WIN32 among the sources makes it a window program. A program with its own pictures names their script,
# relative to the root, and the files that it reads: windres numbers the images of the icons of each script from 1, so all
# icons of a program must be in one script.
function(velbooter_program name)
    cmake_parse_arguments(program "" "DESCRIPTION;FILE;RESOURCES" "DEPENDS" ${ARGN})
    add_executable(${name} ${program_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE velbooter_options)
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
    if(VELBOOTER_STATIC_PROGRAMS)
        target_link_options(${name} PRIVATE -static)
    endif()
    if(WIN32)
        if(NOT program_FILE)
            set(program_FILE "${name}.exe")
        endif()
        cmake_path(GET program_FILE STEM stem)
        cmake_path(GET program_FILE EXTENSION extension)
        set_target_properties(${name} PROPERTIES OUTPUT_NAME "${stem}" SUFFIX "${extension}")
        set(description "${program_DESCRIPTION}")
        set(manifest "${CMAKE_CURRENT_BINARY_DIR}/${name}.manifest")
        set(script "${CMAKE_CURRENT_BINARY_DIR}/${name}.rc")
        configure_file("${PROJECT_SOURCE_DIR}/resources/program.manifest.in" "${manifest}" @ONLY)
        set(ownResources "")
        if(program_RESOURCES)
            set(ownResources "#include \"${program_RESOURCES}\"")
            list(APPEND program_DEPENDS "${program_RESOURCES}")
        endif()
        list(TRANSFORM program_DEPENDS PREPEND "${PROJECT_SOURCE_DIR}/" REGEX "^[^/]")
        configure_file("${PROJECT_SOURCE_DIR}/resources/program.rc.in" "${script}" @ONLY)
        set_source_files_properties("${script}" PROPERTIES OBJECT_DEPENDS
            "${manifest};${PROJECT_SOURCE_DIR}/resources/Version.h;${PROJECT_SOURCE_DIR}/resources/velbooter.ico;${program_DEPENDS}")
        target_sources(${name} PRIVATE "${script}")
        # Without the link time the same sources give the same bytes.
        target_link_options(${name} PRIVATE -s -Wl,--no-insert-timestamp)
    endif()
endfunction()
