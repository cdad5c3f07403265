"""A recipe for Conan 2 that builds this tree. See Packaging/README.md."""

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout


class Orrenby(ConanFile):
    name = "orrenby"
    version = "0.1.0"
    description = "Foundation library for large applications"
    license = "unspecified"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "diagnostics": [True, False]}
    default_options = {"shared": True, "diagnostics": False}
    exports_sources = "CMakeLists.txt", "cmake/*", "Orrenby/*"
    requires = (
        "boost/1.81.0",  # JSON tokens, described classes
        "fmt/9.1.0",
        "icu/72.1",
        "openssl/[>=3 <4]",
        "re2/20230201",
        "sqlite3/3.40.1",
    )

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["BUILD_SHARED_LIBS"] = bool(self.options.shared)
        toolchain.cache_variables["ORRENBY_DIAGNOSTICS"] = bool(self.options.diagnostics)
        toolchain.cache_variables["ORRENBY_TESTS"] = False
        toolchain.cache_variables["ORRENBY_EXAMPLES"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The installed package files are the ones to use: they know floors and configurations.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/Orrenby"]
