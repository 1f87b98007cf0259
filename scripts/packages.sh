# shellcheck shell=bash disable=SC2034
# Sourced: need_packages NAME... makes sure that Debian packages are installed. It installs what is
# missing when it runs as root; otherwise it says how to install it, and exits.

need_packages() {
  local missing=() name output
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
  if ! output=$({ apt-get update -qq &&
    apt-get install -qq -y --no-install-recommends "${missing[@]}"; } 2>&1); then
    tail -n 5 <<<"$output" >&2
    echo "Packages could not be installed: ${missing[*]}" >&2
    exit 1
  fi
}

BUILD_PACKAGES=(g++ cmake ninja-build doctest-dev libbenchmark-dev libcli11-dev
                nlohmann-json3-dev)
# Sanitizers and fuzzing come with clang.
CLANG_PACKAGES=(clang libclang-rt-14-dev)
# To link for Windows what clang compiled.
LLD_PACKAGES=(lld)
CROSS_PACKAGES=(g++-mingw-w64-x86-64-win32 mingw-w64-tools)
PYTHON_PACKAGES=(python3)
# To read the pages as Markdown. Debian's own Python finds it, /usr/bin/python3.
PAGES_PACKAGES=(python3-markdown-it)
# To run what was built for Windows.
WINE_PACKAGES=(wine wine64 winbind tzdata)
# To build for Windows and run what was built.
WINDOWS_PACKAGES=("${CROSS_PACKAGES[@]}" "${PYTHON_PACKAGES[@]}" "${WINE_PACKAGES[@]}")
# To make an installer package of that.
PACKAGING_PACKAGES=(wixl msitools faketime git)
# To sign such a package, and to make a key for that.
SIGNING_PACKAGES=(osslsigncode openssl)
# To read metrics as their collectors do. Only Debian's own Python finds it.
METRICS_PACKAGES=(python3-prometheus-client)
FORMAT_PACKAGES=(clang-format)
TIDY_PACKAGES=(clang-tidy)
PYFLAKES_PACKAGES=(pyflakes3)
SHELLCHECK_PACKAGES=(shellcheck)
# To read manual pages, and to find mistakes in them.
MANUALS_PACKAGES=(groff-base man-db mandoc)
BROWSER_PACKAGES=(chromium fonts-liberation)
# A cluster, for Debian's own Python.
DASK_PACKAGES=(python3-distributed)
