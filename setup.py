"""Lets CMake build the module of the Python package; pyproject.toml has all else. CMAKE_ARGS gives it further words."""

import os
import re
import shlex
import subprocess
import sys
from pathlib import Path

import pybind11
from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

tree = Path(__file__).resolve().parent
version = re.search(r"project\(quarvo VERSION ([0-9.]+)", (tree / "CMakeLists.txt").read_text()).group(1)


class build_by_cmake(build_ext):
    def build_extension(self, extension: Extension) -> None:
        target = Path(self.get_ext_fullpath(extension.name)).resolve()
        build = Path(self.build_temp).resolve()
        subprocess.run(
            [
                "cmake", "-S", tree, "-B", build, "-G", "Ninja",
                "-DCMAKE_BUILD_TYPE=Release",
                "-DQUARVO_BUILD_PYTHON=ON",
                "-DQUARVO_WARNINGS_AS_ERRORS=OFF",
                "-DQUARVO_BUILD_REPORT=OFF",
                f"-DPYTHON_EXECUTABLE={sys.executable}",
                f"-Dpybind11_DIR={pybind11.get_cmake_dir()}",
                *shlex.split(os.environ.get("CMAKE_ARGS", "")),
            ],
            check=True,
        )  # fmt: skip
        subprocess.run(["cmake", "--build", build, "--target", "quarvo_python"], check=True)
        built = next((build / "python/quarvo").glob("_quarvo.*.so"))
        target.parent.mkdir(parents=True, exist_ok=True)
        self.copy_file(str(built), str(target))


setup(
    version=version,
    ext_modules=[Extension("quarvo._quarvo", sources=[])],
    cmdclass={"build_ext": build_by_cmake},
)
