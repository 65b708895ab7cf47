# Debian packages the build, the tests, the demo and the Debian package need
# (dpkg-dev and file: dpkg-shlibdeps works out the package's dependencies;
# qttools5-dev and libqwt-qt5-dev: the UI loader and Qwt for bench_compare).
CORVANE_PACKAGES=(
    cmake g++ make pkg-config dpkg-dev file
    qtbase5-dev qtbase5-dev-tools libqt5svg5-dev qttools5-dev libqwt-qt5-dev
    xvfb xauth xdotool x11-utils
    dbus dbus-x11 at-spi2-core python3-pyatspi
    fonts-dejavu-core
    libxml2-utils
)

# What the sanitizer and fuzzing builds need besides: clang with its
# sanitizer and libFuzzer run-times.
CORVANE_SANITIZER_PACKAGES=(clang-14 libclang-rt-14-dev)

# Installs the packages that are missing; runs apt-get update only when
# something must be installed.
corvane_install_deps() {
    corvane_install_packages "${CORVANE_PACKAGES[@]}"
}

corvane_install_sanitizer_deps() {
    corvane_install_packages "${CORVANE_SANITIZER_PACKAGES[@]}"
    CORVANE_CLANG="$(command -v clang++ || command -v clang++-14)"
}

corvane_install_packages() {
    local missing=()
    local p
    for p in "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
