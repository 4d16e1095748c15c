#!/usr/bin/env bash
# A private CUPS scheduler with one cups-pdf printer, QuillonPDF, made the default, for the printing
# tests: configuration, spool, socket, logs and the printed PDFs all live under <dir>.
#   cupsd.sh start <dir>   (re)creates <dir> and starts the scheduler; prints the socket's path
#   cupsd.sh stop <dir>    stops the scheduler of <dir> by its pid
# cups-pdf reads its settings from a fixed path under /etc, so the scheduler runs in a mount namespace of
# its own in which that path shows our file. Its filters run as lp, and a folder above <dir> may be closed
# to others (mktemp -d, a private home): in that namespace the scheduler sees <dir> at an empty temporary
# folder that lp can reach. Nothing outside <dir> is written but that folder, removed again at stop.
set -euo pipefail
cmd=${1:?start or stop} dir=${2:?directory}
pidfile=$dir/cupsd.pid
printer=QuillonPDF
ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd

stop() {
  if [ -f "$pidfile" ]; then
    local pid
    pid=$(cat "$pidfile")
    if kill "$pid" 2>/dev/null; then
      for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
      kill -9 "$pid" 2>/dev/null || true
    fi
    rm -f "$pidfile"
  fi
  if [ -f "$dir/seen-at" ]; then
    rmdir "$(cat "$dir/seen-at")" 2>/dev/null || true
    rm -f "$dir/seen-at"
  fi
}

start() {
  stop
  rm -rf "$dir"
  mkdir -p "$dir"/{etc,spool,cache,state,log,pdf,tmp}
  dir=$(cd "$dir" && pwd)
  pidfile=$dir/cupsd.pid
  local sock=$dir/cups.sock at
  at=$(mktemp -d)
  echo "$at" >"$dir/seen-at"
  if [ ${#sock} -ge 100 ]; then
    echo "cupsd.sh: socket path too long for a Unix socket: $sock" >&2
    exit 1
  fi
  [ -f "$ppd" ] && command -v cupsd >/dev/null || { echo "cupsd.sh: cups or cups-pdf missing" >&2; exit 1; }
  # the filters run as lp and write their temporary files here
  chmod 1777 "$dir/tmp"
  cat >"$dir/etc/cups-files.conf" <<CONF
ServerRoot $at/etc
RequestRoot $at/spool
TempDir $at/tmp
CacheDir $at/cache
StateDir $at/state
Printcap $at/printcap
ServerBin /usr/lib/cups
DataDir /usr/share/cups
AccessLog $at/log/access_log
ErrorLog $at/log/error_log
PageLog $at/log/page_log
User lp
Group lp
SystemGroup root
Sandboxing Relaxed
CONF
  cat >"$dir/etc/cupsd.conf" <<CONF
LogLevel info
ErrorPolicy abort-job
Listen $at/cups.sock
Browsing No
WebInterface No
DefaultAuthType None
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
CONF
  cat >"$dir/etc/cups-pdf.conf" <<CONF
Out $at/pdf
AnonDirName $at/pdf
Spool $at/tmp
Log $at/log
Grp root
CONF
  unshare --mount --propagation private sh -c \
    'mount --bind "$1" "$2" && mount --bind "$2/etc/cups-pdf.conf" /etc/cups/cups-pdf.conf &&
     exec cupsd -f -c "$2/etc/cupsd.conf" -s "$2/etc/cups-files.conf"' \
    cupsd "$dir" "$at" </dev/null >"$dir/log/cupsd.out" 2>&1 &
  echo $! >"$pidfile"
  export CUPS_SERVER=$sock
  for _ in $(seq 100); do
    [ -S "$sock" ] && [ "$(lpstat -r 2>/dev/null)" = "scheduler is running" ] && break
    kill -0 "$(cat "$pidfile")" 2>/dev/null || { cat "$dir/log/cupsd.out" >&2; exit 1; }
    sleep 0.1
  done
  # lpadmin warns that drivers are deprecated; the warning is all it says on success
  lpadmin -p "$printer" -E -v cups-pdf:/ -P "$ppd" 2>"$dir/log/lpadmin.out" || { cat "$dir/log/lpadmin.out" >&2; exit 1; }
  lpadmin -d "$printer"
  echo "$sock"
}

case $cmd in
  start) start ;;
  stop) stop ;;
  *) echo "usage: cupsd.sh start|stop <dir>" >&2; exit 2 ;;
esac
