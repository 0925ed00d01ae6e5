# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced before a build tree is made: compilers' results of earlier builds are taken from ccache, where it is installed.
# A build tree keeps the compiler launcher that it was made with.
if command -v ccache >/dev/null; then
    export CMAKE_C_COMPILER_LAUNCHER="${CMAKE_C_COMPILER_LAUNCHER:-ccache}"
    export CMAKE_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER:-ccache}"
    # By name: a package is built with a home folder of its own, which goes with the build.
    export CCACHE_DIR="${CCACHE_DIR:-$(ccache --get-config cache_dir)}"
    # Precompiled headers can only be found again so. Files that a build has made a moment ago may be included.
    export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
    # A compiler writes the headers of a source beside its result, so that ccache needn't preprocess the source first.
    export CCACHE_DEPEND="${CCACHE_DEPEND:-1}"
fi
