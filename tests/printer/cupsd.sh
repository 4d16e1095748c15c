#!/usr/bin/env bash
# A private CUPS scheduler with one cups-pdf printer, QuillonPDF, made the default, for the printing
# tests: configuration, spool, socket, logs and the printed PDFs all live under <dir>.
#   cupsd.sh start <dir>   (re)creates <dir> and starts the scheduler; prints the socket's path
#   cupsd.sh stop <dir>    stops the scheduler of <dir> by its pid
# cups-pdf reads its settings from a fixed path under /etc, so the scheduler runs in a mount namespace of
# its own in which that path shows our file: nothing outside <dir> is written.
set -euo pipefail
cmd=${1:?start or stop} dir=${2:?directory}
pidfile=$dir/cupsd.pid
printer=QuillonPDF
ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd

stop() {
  [ -f "$pidfile" ] || return 0
  local pid
  pid=$(cat "$pidfile")
  if kill "$pid" 2>/dev/null; then
    for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
    kill -9 "$pid" 2>/dev/null || true
  fi
  rm -f "$pidfile"
}

start() {
  stop
  rm -rf "$dir"
  mkdir -p "$dir"/{etc,spool,cache,state,log,pdf,tmp}
  dir=$(cd "$dir" && pwd)
  pidfile=$dir/cupsd.pid
  local sock=$dir/cups.sock
  if [ ${#sock} -ge 100 ]; then
    echo "cupsd.sh: socket path too long for a Unix socket: $sock" >&2
    exit 1
  fi
  [ -f "$ppd" ] && command -v cupsd >/dev/null || { echo "cupsd.sh: cups or cups-pdf missing" >&2; exit 1; }
  # the filters run as lp and write their temporary files here
  chmod 1777 "$dir/tmp"
  cat >"$dir/etc/cups-files.conf" <<CONF
ServerRoot $dir/etc
RequestRoot $dir/spool
TempDir $dir/tmp
CacheDir $dir/cache
StateDir $dir/state
Printcap $dir/printcap
ServerBin /usr/lib/cups
DataDir /usr/share/cups
AccessLog $dir/log/access_log
ErrorLog $dir/log/error_log
PageLog $dir/log/page_log
User lp
Group lp
SystemGroup root
Sandboxing Relaxed
CONF
  cat >"$dir/etc/cupsd.conf" <<CONF
LogLevel info
ErrorPolicy abort-job
Listen $sock
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
Out $dir/pdf
AnonDirName $dir/pdf
Spool $dir/tmp
Log $dir/log
Grp root
CONF
  unshare --mount --propagation private sh -c \
    'mount --bind "$1/etc/cups-pdf.conf" /etc/cups/cups-pdf.conf && exec cupsd -f -c "$1/etc/cupsd.conf" -s "$1/etc/cups-files.conf"' \
    cupsd "$dir" </dev/null >"$dir/log/cupsd.out" 2>&1 &
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
