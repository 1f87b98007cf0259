# Sourced: need_packages NAME... makes sure that Debian packages are installed, as root by
# installing what is missing, else by saying how.

need_packages() {
  local missing=() name
  for name in "$@"; do
    [[ $(dpkg-query -W -f='${Status}' "$name" 2>/dev/null) == "install ok installed" ]] ||
      missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  if ((EUID != 0)); then
    echo "Packages are missing. Run: sudo apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  echo "Installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  if ! { apt-get update -qq && apt-get install -qq -y --no-install-recommends "${missing[@]}"; } \
    >/tmp/dozewell-packages.log 2>&1; then
    tail -n 5 /tmp/dozewell-packages.log >&2
    echo "Packages could not be installed: ${missing[*]}" >&2
    exit 1
  fi
}

BUILD_PACKAGES=(g++ cmake ninja-build doctest-dev libbenchmark-dev libcli11-dev)
# To build for Windows and run what was built.
WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-win32 mingw-w64-tools python3 tzdata wine wine64 winbind)
# To make an installer package of that.
PACKAGING_PACKAGES=(wixl msitools faketime git)
TEST_PACKAGES=("${WINDOWS_PACKAGES[@]}" "${PACKAGING_PACKAGES[@]}"
               clang clang-format clang-tidy libclang-rt-14-dev chromium fonts-liberation)
