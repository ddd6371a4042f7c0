"""Builds the wheel: CMake makes the extension and installs the package with the shared library beside it."""

from skbuild import setup

setup(
    packages=["zucmtr"],
    package_dir={"": "python"},
    package_data={"zucmtr": ["py.typed", "*.pyi"]},
    cmake_args=[
        "-DCMAKE_BUILD_TYPE=Release",
        "-DZUCMTR_TESTS=OFF",
        "-DZUCMTR_EXAMPLES=OFF",
        "-DZUCMTR_PYTHON_WHEEL=ON",
        "-DZUCMTR_PYTHON_DIR=python",
    ],
    cmake_install_target="install-python",
)
