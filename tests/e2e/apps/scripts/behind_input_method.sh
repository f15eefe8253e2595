#!/bin/sh
# Starts an input method with a plain keyboard as its engine, which reads the keys for the program that
# is given, and then that program.
fcitx5 --replace --disable wayland,waylandim >"$(dirname "$ZARVY_E2E_CHANNEL")/input-method.log" 2>&1 &
until xprop -root XIM_SERVERS | grep -q fcitx; do
  sleep 0.1
done
export XMODIFIERS=@im=fcitx
exec "$@"
