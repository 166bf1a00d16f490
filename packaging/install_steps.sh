# Run by packaging/install-test inside of the fresh Debian, as root, with the packages in /test and their
# upgrade in /test/new.
set -euo pipefail

store=/var/lib/lineweir/server.db
link=/etc/systemd/system/multi-user.target.wants/lineweir-server.service
programs=(lineweir lineweir-admin lineweir-desk lineweir-driver lineweir-seat lineweir-server
  lineweir-studio)
server=

step() { printf '%s\n' "- $*"; }
fail() {
  printf '%s\n' "wrong: $*" >&2
  [[ -z $server ]] || kill "$server" 2> /dev/null || true
  exit 1
}
quietly() { "$@" > /test/said 2>&1 || { cat /test/said; fail "$*"; }; }

# Another server on this machine may have the port of the configuration; here is a network without any.
make_network() {
  touch /test/network
  unshare --net=/test/network ip link set lo up
}

# As the unit starts it, but for systemd, which isn't here.
start_server() {
  install -d -o lineweir -g lineweir -m 700 /run/lineweir /var/lib/lineweir
  rm -f /test/ready
  mkfifo /test/ready
  nsenter --net=/test/network \
    setpriv --reuid=lineweir --regid=lineweir --init-groups --no-new-privs \
    lineweir-server --config /etc/lineweir/server.toml > /test/ready 2> /test/server.log &
  server=$!
  exec 8< /test/ready
  while read -r -t 20 line <&8; do
    [[ $line == ready* ]] && return
    printf '%s\n' "$line" >> /test/server.log
  done
  cat /test/server.log
  fail "the server did not get ready"
}

stop_server() {
  kill "$server"
  wait "$server" || fail "the server ended with $?"
  server=
}

# As it was made it may be old; users have its updates.
quietly apt-get update
quietly apt-get -y dist-upgrade
# What minimal images leave out would hide files of the packages.
rm -f /etc/dpkg/dpkg.cfg.d/* /etc/apt/apt.conf.d/docker-*

step "install"
quietly apt-get install -y --no-install-recommends bash-completion iproute2 /test/*.deb
make_network
version=$(dpkg-query -W -f '${Version}' lineweir-server)
for program in "${programs[@]}"; do
  [[ $("$program" --version) == "$program ${version%-*}" ]] || fail "$program --version"
  "$program" --help | grep -q -- --version || fail "$program --help"
  ls /usr/share/man/man[18]/"$program".[18].gz > /dev/null || fail "$program has no page"
  [[ -f /usr/share/bash-completion/completions/$program ]] || fail "$program isn't completed"
done
[[ $(getent passwd lineweir | cut -d: -f7) == */nologin ]] || fail "no user lineweir, or one that may log in"
getent group lineweir-console > /dev/null || fail "no group lineweir-console"
[[ -L $link ]] || fail "the service isn't enabled"
[[ ! -e /var/lib/lineweir ]] || fail "the server was started"
systemd-analyze verify --man=no /lib/systemd/system/lineweir-server.service || fail "the unit"

step "the pages, each of whose links leads somewhere"
for page in server protocol packages security SECURITY; do
  [[ -f /usr/share/doc/lineweir-server/$page.md ]] || fail "there is no page $page.md"
done
(cd /usr/share/doc/lineweir-server && grep -oH ']([^)#:]\+' ./*.md) > /test/links
while IFS= read -r link; do
  target=${link#*'('}
  [[ $target == /* ]] || target=/usr/share/doc/lineweir-server/$target
  [[ -e $target ]] || fail "a link leads nowhere: $link"
done < /test/links

step "the server, as its own user, with the configuration of the package"
start_server
password=$(sed -n 's/^.*first user engineer, password //p' /test/server.log)
[[ -n $password ]] || fail "no password was told"
printf 'newsecret\n' | quietly lineweir-admin user password engineer --password-stdin
printf 'samsecret\n' | quietly lineweir-admin user add sam --template screener --password-stdin
lineweir-admin user list | grep -q '^sam ' || fail "no user sam"
quietly lineweir-admin call 1 3 --number '555 0100'
quietly lineweir-admin hangup 1 3
printf 'samsecret\n' |
  nsenter --net=/test/network lineweir-seat --host 127.0.0.1 --port 2001 --user sam &
seat=$!
for ((i = 0; i < 100; ++i)); do
  lineweir-admin seats | grep -q sam && break
  sleep 0.1
done
lineweir-admin seats | grep -q sam || fail "sam's seat didn't log in"
kill "$seat"
wait "$seat" 2> /dev/null || true

step "the window, by the entry of the desktop's menu"
useradd --create-home ann
exec_line=$(sed -n 's/^Exec=//p' /usr/share/applications/org.lineweir.Console.desktop | head -1)
[[ -x $exec_line ]] || fail "the entry starts nothing"
install -d -o ann -m 700 /test/picture
# shellcheck disable=SC2024
if ! setpriv --reuid=ann --regid=ann --init-groups env HOME=/home/ann XDG_RUNTIME_DIR=/test/picture \
  LINEWEIR_SCREENSHOT=/test/picture/window.png LINEWEIR_SCREENSHOT_AFTER=3 LINEWEIR_SCREENSHOT_ENDS=1 \
  timeout 60 "$exec_line" > /test/said 2>&1; then
  cat /test/said
  fail "the console"
fi
mv /test/picture/window.png /test/window.png || fail "no window"
[[ -f /home/ann/.local/share/lineweir/console/Writ.inf ]] || fail "no settings in the console's folder"
[[ -z $(find /home/ann -maxdepth 1 -name 'Writ*') ]] || fail "settings in the user's home"

step "the tools"
lineweir-studio --duration 1 | grep -q '^device /dev/pts/' || fail "lineweir-studio"
printf 'quit\n' | lineweir-desk | grep -q '^device /dev/pts/' || fail "lineweir-desk"
printf '' | quietly lineweir-driver --dir /tmp

step "upgrade, with the server at work and a configuration of the station's own"
echo '# changed by the station' >> /etc/lineweir/server.toml
quietly systemctl disable lineweir-server
quietly apt-get install -y --no-install-recommends /test/new/*.deb
[[ $(dpkg-query -W -f '${Version}' lineweir-server) == *+next1 ]] || fail "nothing was upgraded"
kill -0 "$server" || fail "the upgrade ended the server"
grep -q 'changed by the station' /etc/lineweir/server.toml || fail "the configuration is another"
[[ ! -e $link ]] || fail "the upgrade enabled what the station had disabled"
quietly systemctl enable lineweir-server
stop_server
start_server
lineweir-admin calls | grep -q '555 0100' || fail "the new version doesn't know the call"
quietly lineweir-admin audit verify
stop_server

step "remove"
before=$(sha256sum "$store")
quietly apt-get remove -y lineweir lineweir-server lineweir-tools
for program in "${programs[@]}"; do
  [[ ! -e /usr/bin/$program ]] || fail "$program is still there"
done
[[ $(sha256sum "$store") == "$before" ]] || fail "the store is another, or gone"
[[ -f /etc/lineweir/server.toml ]] || fail "the configuration is gone"

step "and back again"
quietly apt-get install -y --no-install-recommends /test/new/lineweir-server.deb
grep -q 'changed by the station' /etc/lineweir/server.toml || fail "the configuration is another"
start_server
lineweir-admin calls | grep -q '555 0100' || fail "the calls are gone"
stop_server

step "purge"
mkdir -p /srv/backup
cp "$store" /srv/backup/of-lineweir.db
rm -rf /run/lineweir
quietly dpkg --purge lineweir lineweir-server lineweir-tools
find / -xdev \( -path /proc -o -path /test -o -path /home/ann -o -path /srv/backup -o -path /var/log \
  -o -path /var/cache/apt \) -prune -o \( -iname '*lineweir*' -o -iname '*quorlink*' \) -print > /test/left
[[ ! -s /test/left ]] || fail "left behind: $(< /test/left)"
[[ -f /srv/backup/of-lineweir.db && -d /home/ann/.local/share/lineweir ]] ||
  fail "the purge took what wasn't the package's"
getent passwd lineweir > /dev/null || fail "the user is gone, whose number backups belong to"
[[ $(dpkg -l 'lineweir*' 2> /dev/null | grep -c '^[ir]') -eq 0 ]] || fail "dpkg still knows a package"
