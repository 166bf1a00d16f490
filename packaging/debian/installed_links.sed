# The pages link to one another and into the sources; installed they lie side by side in the server's
# folder of papers. packaging/install_steps.sh looks whether all links lead somewhere.
s#\[packaging/server\.toml\](\.\./packaging/server\.toml)#[examples/server.toml](examples/server.toml)#g
s#\[docs/examples/#[examples/#g
s#\[src/platform/qt/dbus\](\.\./src/platform/qt/dbus)#[examples/dbus](examples/dbus)#g
s#(\.\./packaging/dbus/quorlink\.Server\.conf)#(/usr/share/dbus-1/system.d/quorlink.Server.conf)#g
s#(\.\./packaging/dbus/quorlink\.Server\.service)#(/usr/share/dbus-1/system-services/quorlink.Server.service)#g
s#(\.\./SECURITY\.md)#(SECURITY.md)#g
s#\[docs/\([a-z]*\.md\)\](docs/#[\1](#g
# What no package has is named without a link. The manual is in the console.
s#\[manual\](manual\.md[^)]*)#manual, which the console shows with F1#g
s#\[testing\.md\](testing\.md[^)]*)#docs/testing.md of the sources#g
