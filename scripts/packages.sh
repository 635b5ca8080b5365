# Debian packages of the project, and how to get those that are missing. To be sourced.
# shellcheck shell=bash
# shellcheck disable=SC2034  # the lists are for those who source this

packages_build="g++ cmake ninja-build libcli11-dev robin-map-dev libxxhash-dev libboost-dev \
libre2-dev rapidjson-dev \
qt6-base-dev qt6-tools-dev qt6-tools-dev-tools \
qt6-l10n-tools librsvg2-bin fonts-dejavu-core"
packages_headless="xvfb xdotool imagemagick"
packages_test="libgtest-dev libgmock-dev clang libclang-rt-dev llvm locales python3 jq sqlite3"
packages_e2e="xvfb xdotool openbox dbus at-spi2-core python3-gi"
packages_bench="libbenchmark-dev xxd jq time"
packages_format="clang-format"
packages_lint="clang-tidy shellcheck reuse pyflakes3"
packages_interop="sqlite3 jq lnav clickhouse-server clickhouse-client"
packages_package="asciidoctor pandoc debhelper fakeroot lintian desktop-file-utils appstream libxml2-utils \
mandoc man-db bsdextrautils shared-mime-info python3-gi debootstrap openbox $packages_headless"

# install_missing PACKAGE...: installs what is not there, as root or with sudo.
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and there is no sudo to install them with." >&2
            return 1
        }
        root=(sudo)
    fi
    "${root[@]}" apt-get update -qq
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
