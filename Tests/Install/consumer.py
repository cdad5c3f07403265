#!/usr/bin/env python3
"""Installs the library into a temporary folder, then builds and runs a small program against what is there:
once found through CMake, once through pkg-config. A program compiled for the other configuration, diagnostic or plain, must
not link. With --static the library is built anew as static libraries first. With --packages it is packed for Debian, and what is
installed is the content of those packages, put into the temporary folder without asking the system's package manager."""

import argparse
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

CONSUMER = pathlib.Path(__file__).resolve().parent / "Consumer"
SOURCE_TREE = CONSUMER.parent.parent.parent
EXPECTED = "released by the installed library's make\n"
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror"]


def run(*command, **options):
    print("+", shlex.join(str(word) for word in command), flush=True)
    return subprocess.run([str(word) for word in command], check=True, **options)


def check_output(program, environment=None):
    printed = run(program, stdout=subprocess.PIPE, text=True, env=environment).stdout
    if printed != EXPECTED:
        sys.exit(f"{program} printed {printed!r} instead of {EXPECTED!r}")


def build_static(build, arguments):
    flags = [f"-DCMAKE_CXX_COMPILER={arguments.compiler}", f"-DCMAKE_CXX_FLAGS={arguments.flags}",
             f"-DCMAKE_BUILD_TYPE={arguments.build_type}", f"-DORRENBY_DIAGNOSTICS={arguments.diagnostics}"]
    run(arguments.cmake, "-G", "Ninja", "-S", SOURCE_TREE, "-B", build, "-DBUILD_SHARED_LIBS=OFF", "-DORRENBY_TESTS=OFF",
        "-DORRENBY_EXAMPLES=OFF", *flags)
    run(arguments.cmake, "--build", build)


def unpack_debian_packages(build, folder):
    """Returns the prefix below which the packages lie. Each has what it should have, and none has the other's."""
    # Compressing is most of the work of packing, and nobody keeps these packages.
    run("cpack", "-G", "DEB", "--config", build / "CPackConfig.cmake", "-B", folder / "packages",
        "-D", "CPACK_DEBIAN_COMPRESSION_TYPE=none", "-D", "CPACK_STRIP_FILES=OFF", stdout=subprocess.DEVNULL)
    packages = {package.name.split("_")[0]: package for package in (folder / "packages").glob("*.deb")}
    runtime = [name for name in packages if name != "liborrenby-dev"]
    if len(packages) != 2 or len(runtime) != 1 or not runtime[0].removeprefix("liborrenby").isdigit():
        sys.exit(f"Packages of these names were made: {sorted(packages)}")
    for name, package in packages.items():
        files = run("dpkg-deb", "--contents", package, stdout=subprocess.PIPE, text=True).stdout
        if ("/usr/include/" in files) != (name == "liborrenby-dev"):
            sys.exit(f"The headers lie in the wrong package: {name} has\n{files}")
        run("dpkg-deb", "--extract", package, folder / "root")
    depends = run("dpkg-deb", "--field", packages["liborrenby-dev"], "Depends", stdout=subprocess.PIPE, text=True).stdout
    if f"{runtime[0]} (= " not in depends:
        sys.exit(f"The development package does not ask for the libraries of its version: {depends}")
    return folder / "root" / "usr"


def through_cmake(prefix, build, arguments):
    run(arguments.cmake, "-G", "Ninja", "-S", CONSUMER, "-B", build, f"-DCMAKE_PREFIX_PATH={prefix}",
        f"-DCMAKE_CXX_COMPILER={arguments.compiler}", f"-DCMAKE_CXX_FLAGS={arguments.flags}")
    run(arguments.cmake, "--build", build)
    check_output(build / "consumer")


def pkg_config_flags(libraries, arguments):
    environment = dict(os.environ, PKG_CONFIG_PATH=str(libraries / "pkgconfig"))
    kind = ["--static"] if arguments.static else []
    flags = run("pkg-config", *kind, "--cflags", "--libs", "orrenby", env=environment, stdout=subprocess.PIPE, text=True)
    return shlex.split(flags.stdout)


def compile_command(program, flags, arguments):
    return [arguments.compiler, "-std=c++20", *WARNINGS, *shlex.split(arguments.flags), CONSUMER / "Consumer.cpp", "-o", program,
            *flags]


def through_pkg_config(prefix, program, arguments):
    libraries = prefix / arguments.libdir
    run(*compile_command(program, pkg_config_flags(libraries, arguments), arguments))
    check_output(program, dict(os.environ, LD_LIBRARY_PATH=str(libraries)))


def other_configuration_does_not_link(prefix, program, arguments):
    flags = pkg_config_flags(prefix / arguments.libdir, arguments)
    define = "-DORRENBY_DIAGNOSTICS"
    flags = [flag for flag in flags if flag != define] if define in flags else [define, *flags]
    command = [str(word) for word in compile_command(program, flags, arguments)]
    print("+ (must not link)", shlex.join(command), flush=True)
    result = subprocess.run(command, stderr=subprocess.PIPE, text=True, env=dict(os.environ, LC_ALL="C"))
    if result.returncode == 0 or "undefined reference" not in result.stderr:
        sys.exit(f"A program of the other configuration was not refused by the linker:\n{result.stderr}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, type=pathlib.Path, help="the build folder to install from")
    parser.add_argument("--cmake", default="cmake")
    parser.add_argument("--compiler", default="c++")
    parser.add_argument("--flags", default="", help="compiler options of the build, for example of a sanitizer")
    parser.add_argument("--build-type", default="Debug")
    parser.add_argument("--diagnostics", default="OFF")
    parser.add_argument("--libdir", default="lib")
    parser.add_argument("--static", action="store_true")
    parser.add_argument("--packages", action="store_true")
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory(prefix="orrenby-install-") as folder:
        folder = pathlib.Path(folder)
        build = arguments.build
        if arguments.static:
            build = folder / "static"
            build_static(build, arguments)
        if arguments.packages:
            prefix = unpack_debian_packages(build, folder)
        else:
            prefix = folder / "prefix"
            run(arguments.cmake, "--install", build, "--prefix", prefix, stdout=subprocess.DEVNULL)
        through_cmake(prefix, folder / "consumer", arguments)
        through_pkg_config(prefix, folder / "consumer-of-pkg-config", arguments)
        other_configuration_does_not_link(prefix, folder / "consumer-of-the-other-kind", arguments)


if __name__ == "__main__":
    main()
