# The world around the daemon: starts it, plays a scenario as keys, events, files and signals, says what holds. Sourced.

STORE=/tmp/nvram
MESSAGES=/run/messages

say() { echo "== $*"; }

# check WHAT CONDITION...: a line of the report.
check() {
    local what=$1
    shift
    if "$@"; then
        echo "ok: $what"
    else
        echo "FAILED: $what"
        sed 's/^/    /' $MESSAGES | tail -n 5
    fi
}

start_daemon() {
    frontpaneld > $MESSAGES 2>&1 < /dev/null &
    daemon=$!
}

stop_daemon() {
    kill -KILL $daemon
    wait $daemon
    rm -f /tmp/lcd/lcd_wp
} 2> /dev/null

sleep_ticks() { usleep $(($1 * 100000)); }

set_setting() {
    { grep -sv "^$1=" $STORE; echo "$1=$2"; } > $STORE.new
    mv $STORE.new $STORE
}

# write_file PATH TEXT: what the companions keep comes to the display by them.
write_file() {
    local path=$1
    case $path in
    /tmp/lcd/network_status/speed/*) path=/run/speed/${path##*/} ;;
    /tmp/lcd/network_status/*) path=/run/status/${path##*/} ;;
    esac
    mkdir -p "${path%/*}"
    printf "%b" "$2" > "$path"
}

# set_output COMMAND TEXT: what the tool prints from now on, however it is called.
set_output() {
    local program=${1%% *}
    write_file "/run/output/${program##*/}" "$2"
}

# set_interface NAME ADDRESS NETMASK HWADDR MTU
set_interface() { ifconfig $1 hw ether $4 mtu $5 && ifconfig $1 $2 netmask $3 up; }

announce_key() {
    echo "$1" > /tmp/lcd/lcd_action
    kill -USR1 $daemon
}

announce_event() {
    echo "$*" > /tmp/lcd/lcd_event
    announce_key event
}

# What the scenario says of the screen is seen in the pictures.
check_setting() {
    if [ "$1" = nvram ]; then
        check "the setting $2 is $3" grep -qx "$2=$3" $STORE
    fi
}

play() {
    say "playing ${1##*/}"
    local line
    while read -r line; do
        eval "set -- $line"
        case $1 in
        start) start_daemon ;;
        pass) sleep_ticks ${2:-1} ;;
        key) announce_key "$2" ;;
        event) shift; announce_event "$@" ;;
        signal) kill -USR2 $daemon ;;
        nvram) set_setting "$2" "$3" ;;
        mkdir) mkdir -p "$2" ;;
        file) write_file "$2" "$3" ;;
        output) set_output "$2" "$3" ;;
        interface) shift; set_interface "$@" ;;
        expect) shift; check_setting "$@" ;;
        '') ;;
        *) check "the line \"$line\" can be played here" false ;;
        esac
    done < "$1"
    check "the daemon lives" kill -0 $daemon
    check "it printed nothing" [ ! -s $MESSAGES ]
}

memory() {
    local total own
    total=$(sed -n 's/^VmRSS:[^0-9]*//p' /proc/$daemon/status)
    own=$(sed -n 's/^RssAnon:[^0-9]*//p' /proc/$daemon/status)
    echo "memory: frontpaneld has $total resident, $own of it anonymous"
}
