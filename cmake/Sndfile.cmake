# libsndfile for Windows, for which Debian has no package: built here from the sources of Debian's own,
# unchanged, as the library sndfile. It is a library apart since its licence wants it to be replaceable;
# FLAC, which has no such wish, is compiled into it. Of the other codecs it has those without a library.
set(sources ${PROJECT_SOURCE_DIR}/build/sources)
foreach(package libsndfile flac)
  if(NOT EXISTS ${sources}/${package}/debian/changelog)
    message(FATAL_ERROR "The sources of ${package} are not in ${sources}: run tools/sources libsndfile flac")
  endif()
  file(STRINGS ${sources}/${package}/debian/changelog version LIMIT_COUNT 1)
  string(REGEX MATCH "\\(([0-9.]+)[^)]*" version "${version}")
  set(upstream_${package} ${CMAKE_MATCH_1})
  string(SUBSTRING ${version} 1 -1 version_${package})
endforeach()
enable_language(C)

# sndfile_options(TARGET): of sources whose warnings are others' concern. More optimisation takes half as
# long again to compile, and samples pass through once.
function(sndfile_options target)
  target_compile_options(${target} PRIVATE -w -O1 -ffile-prefix-map=${sources}=.)
endfunction()

set(flac ${sources}/flac)
file(GLOB parts ${flac}/src/libFLAC/*.c)
list(FILTER parts EXCLUDE REGEX "ogg_")
add_library(flac STATIC EXCLUDE_FROM_ALL ${parts} ${flac}/src/share/win_utf8_io/win_utf8_io.c)
target_include_directories(flac PRIVATE ${flac}/src/libFLAC/include PUBLIC ${flac}/include)
target_compile_definitions(flac
  PRIVATE PACKAGE_VERSION="${upstream_flac}" FLAC__HAS_OGG=0 FLAC__NO_ASM CPU_IS_BIG_ENDIAN=0
    ENABLE_64_BIT_WORDS=0 WORDS_BIGENDIAN=0 HAVE_STDINT_H=1 HAVE_INTTYPES_H=1 HAVE_FSEEKO=1 HAVE_LROUND=1
  PUBLIC FLAC__NO_DLL)
sndfile_options(flac)

set(sndfile ${sources}/libsndfile)
set(built ${PROJECT_BINARY_DIR}/sndfile)
# What its own set-up would find out about the system.
set(facts "#define PACKAGE_NAME \"libsndfile\"\n#define PACKAGE_VERSION \"${upstream_libsndfile}\"\n")
foreach(name IN ITEMS COMPILER_IS_GCC CPU_IS_LITTLE_ENDIAN HAVE_GETTIMEOFDAY HAVE_GMTIME HAVE_IMMINTRIN_H
    HAVE_INTTYPES_H HAVE_IO_H HAVE_LOCALE_H HAVE_LRINT HAVE_LRINTF HAVE_SETLOCALE HAVE_SSIZE_T
    HAVE_STDBOOL_H HAVE_STDINT_H HAVE_SYS_TIME_H HAVE_SYS_TYPES_H HAVE_UNISTD_H OS_IS_WIN32
    USE_WINDOWS_API)
  string(APPEND facts "#define ${name} 1\n")
endforeach()
foreach(name IN ITEMS CPU_CLIPS_NEGATIVE CPU_CLIPS_POSITIVE CPU_IS_BIG_ENDIAN ENABLE_EXPERIMENTAL_CODE
    HAVE_MPEG)
  string(APPEND facts "#define ${name} 0\n")
endforeach()
string(APPEND facts
  "#define SIZEOF_INT64_T 8\n#define SIZEOF_OFF_T __SIZEOF_LONG__\n#define SIZEOF_WCHAR_T 2\n")
file(CONFIGURE OUTPUT ${built}/config.h CONTENT "@facts@" @ONLY)
# It exports what its header declares.
file(STRINGS ${sndfile}/include/sndfile.h exports REGEX "^([A-Za-z][^(]*[ \t*])?sf_[a-z0-9_]+[ \t]*\\(")
list(FILTER exports EXCLUDE REGEX "^typedef")
list(TRANSFORM exports REPLACE "^([A-Za-z][^(]*[ \t*])?(sf_[a-z0-9_]+)[ \t]*\\(.*" "\\2")
list(FILTER exports INCLUDE REGEX "^sf_")
list(JOIN exports "\n" exports)
file(CONFIGURE OUTPUT ${built}/sndfile.def CONTENT "EXPORTS\n@exports@\n" @ONLY)

file(GLOB parts ${sndfile}/src/*.c ${sndfile}/src/ALAC/*.c ${sndfile}/src/G72x/*.c ${sndfile}/src/GSM610/*.c)
list(FILTER parts EXCLUDE REGEX "test_|_test|/new\\.c")
add_library(sndfile SHARED ${parts} ${built}/sndfile.def)
target_include_directories(sndfile
  PRIVATE ${built} ${sndfile}/src PUBLIC ${sndfile}/include)
target_link_libraries(sndfile PRIVATE flac)
sndfile_options(sndfile)
# One word of its set-up stands for FLAC, Vorbis and Opus together: it is said to those alone that make
# FLAC of it.
set_source_files_properties(${sndfile}/src/flac.c ${sndfile}/src/command.c
  PROPERTIES COMPILE_DEFINITIONS HAVE_EXTERNAL_XIPH_LIBS=1)
