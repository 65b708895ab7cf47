# Debian packages the build, the tests, the demo and the Debian package need
# (dpkg-dev and file: dpkg-shlibdeps works out the package's dependencies).
CORVANE_PACKAGES=(
    cmake g++ make pkg-config dpkg-dev file
    qtbase5-dev qtbase5-dev-tools libqt5svg5-dev qttools5-dev
    xvfb xauth xdotool x11-utils
    fonts-dejavu-core
    libxml2-utils
)

# Installs the packages that are missing; runs apt-get update only when
# something must be installed.
corvane_install_deps() {
    local missing=()
    local p
    for p in "${CORVANE_PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
