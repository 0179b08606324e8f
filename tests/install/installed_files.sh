#!/usr/bin/env bash
# What is installed: the public headers and no other, the libraries, the programs, the packages.
set -euo pipefail
export LC_ALL=C

expected_headers() {
    for folder in include common/include translators/kit/include; do
        (cd "$KELD_SOURCE/$folder" && find . -name '*.h')
    done
    echo ./keld-common/export.h
    echo ./keld-transl/export.h
}

expected_other_files() {
    cat <<END
./$KELD_LIBDIR/cmake/keld-transl/KeldAddTranslator.cmake
./$KELD_LIBDIR/cmake/keld-transl/keld-transl-config-version.cmake
./$KELD_LIBDIR/cmake/keld-transl/keld-transl-config.cmake
./$KELD_LIBDIR/cmake/keld-transl/keld-transl-targets.cmake
./$KELD_LIBDIR/libkeld-common.so
./$KELD_LIBDIR/libkeld-common.so.23
./$KELD_LIBDIR/libkeld-common.so.23.0.0
./$KELD_LIBDIR/libkeld-transl.so
./$KELD_LIBDIR/libkeld-transl.so.23
./$KELD_LIBDIR/libkeld-transl.so.23.0.0
./$KELD_LIBDIR/libkeld-translator-kit.a
./$KELD_LIBDIR/pkgconfig/keld-common.pc
./$KELD_LIBDIR/pkgconfig/keld-transl.pc
./bin/keld
./bin/keld_gearbox.sh
./bin/keld_gearbox_linux_x86_64
./bin/keld_stl.sh
./bin/keld_stl_linux_x86_64
./bin/keld_xyz.sh
./bin/keld_xyz_linux_x86_64
./share/doc/keld-transl/LICENSE
END
    # Where its library is there, the translator for STEP is there, too.
    if [ -e "$KELD_PREFIX/bin/keld_step.sh" ]; then
        printf '%s\n' ./bin/keld_step.sh ./bin/keld_step_linux_x86_64
    fi
}

diff -u --label expected --label installed <(expected_headers | sort) \
    <(cd "$KELD_PREFIX/include" && find . -type f | sort)

# One more file of the CMake package is named after the build type.
diff -u --label expected --label installed <(expected_other_files | sort) \
    <(cd "$KELD_PREFIX" && find . -path ./include -prune -o ! -type d -print |
        grep -v /keld-transl-targets- | sort)
