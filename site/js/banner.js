// SPDX-License-Identifier: GPL-3.0-or-later
// Goes to the next banner after a while. It waits under the pointer and under the keyboard, and it stays for those who
// asked the desktop for less motion.
'use strict';

(() => {
  const seconds = 20;
  const calm = window.matchMedia('(prefers-reduced-motion: reduce)');
  const next = document.querySelector('.next').href;

  const turn = () => {
    const inUse = document.querySelector('body:hover') !== null || document.querySelector('a:focus') !== null;
    if (!calm.matches && !inUse) {
      window.location.replace(next);
    }
  };

  window.setInterval(turn, seconds * 1000);
})();
