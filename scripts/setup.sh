# Sourced by ./run and ./test: brings the machine to where the programs build.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# say TEXT: one line for the person at the terminal.
say() { printf '%s\n' "lineweir: $*"; }

# fail TEXT: what failed, on what, what to do.
fail() {
  printf '%s\n' "lineweir: $*" >&2
  exit 1
}

# ensure_packages KIND...: installs the packages of these kinds that are missing.
ensure_packages() {
  local kind package purpose
  local missing=()
  while read -r kind package purpose; do
    [[ $kind == '#' || -z $kind ]] && continue
    [[ " $* " == *" $kind "* ]] || continue
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] && continue
    missing+=("$package")
    say "missing: $package ($purpose)"
  done < "$root/scripts/packages.txt"
  [[ ${#missing[@]} -eq 0 ]] && return

  local as_root=()
  if [[ $(id -u) -ne 0 ]]; then
    command -v sudo > /dev/null ||
      fail "these packages must be installed first, as root: apt-get install ${missing[*]}"
    as_root=(sudo)
  fi
  say "installing them with apt-get"
  export DEBIAN_FRONTEND=noninteractive
  "${as_root[@]}" apt-get update -qq ||
    fail "apt-get update failed; check the network and /etc/apt/sources.list"
  [[ " ${missing[*]} " == *" postgresql "* ]] && let_no_database_run "${as_root[@]}"
  "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null ||
    fail "apt-get install failed for: ${missing[*]}"
  "${as_root[@]}" rm -f "$no_database"
}

# The tests make databases of their own; the package would make one too and let it run for ever.
no_database=/etc/postgresql-common/createcluster.d/lineweir-tests.conf
let_no_database_run() {
  "$@" mkdir -p "${no_database%/*}"
  echo 'create_main_cluster = false' | "$@" tee "$no_database" > /dev/null
}

# configure PRESET FOLDER [CMAKE-ARGUMENT...]: once. Several files are compiled at a time, which from
# nothing takes a third of the time of one by one.
configure() {
  local preset=$1 folder=$2
  shift 2
  [[ ! -f $root/$folder/build.ninja ]] || return 0
  say "configuring $folder"
  (cd "$root" && cmake --preset "$preset" -B "$folder" -DCMAKE_UNITY_BUILD=ON \
    -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 "$@" > /dev/null) ||
    fail "configuring failed; 'cmake --preset $preset -B $folder' says why"
}

# build_targets FOLDER [TARGET...]: builds what has changed, of everything or of these.
build_targets() {
  local folder=$1
  shift
  say "building $folder"
  (cd "$root" && NINJA_STATUS='[%f/%t] ' cmake --build "$folder" ${1:+--target "$@"}) || fail "the build failed"
}

# build PRESET FOLDER [CMAKE-ARGUMENT...]: configures once, builds what has changed.
build() {
  configure "$@"
  build_targets "$2"
}
