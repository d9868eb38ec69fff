# Sourced by scripts that run the real program on a session bus of their own:
# private_bus WORK starts a dbus-daemon listening in WORK (no service files, so
# nothing real starts on it), exports DBUS_SESSION_BUS_ADDRESS and sets `bus`
# to the daemon's pid for the caller to end.
private_bus() {
    cat >"$1/bus.conf" <<EOC
<busconfig><type>session</type><listen>unix:dir=$1</listen><policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy></busconfig>
EOC
    dbus-daemon --fork --print-address=1 --print-pid=1 --config-file="$1/bus.conf" >"$1/bus"
    bus=$(sed -n 2p "$1/bus")
    DBUS_SESSION_BUS_ADDRESS=$(sed -n 1p "$1/bus")
    export DBUS_SESSION_BUS_ADDRESS
}
