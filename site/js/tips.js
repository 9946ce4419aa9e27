// SPDX-License-Identifier: GPL-3.0-or-later
// Shows one tip at a time. Each day begins with another one. Nothing is stored.
'use strict';

(() => {
  const tips = [...document.querySelectorAll('article')];
  const now = new Date();
  const day = Math.floor((now.getTime() - now.getTimezoneOffset() * 60000) / 86400000);
  let current = day % tips.length;

  const show = (number) => {
    current = (number + tips.length) % tips.length;
    tips.forEach((tip, i) => { tip.hidden = i !== current; });
    document.querySelector('.count').textContent = 'Tip ' + (current + 1) + ' of ' + tips.length;
  };

  document.querySelector('.next').addEventListener('click', () => show(current + 1));
  document.querySelector('.previous').addEventListener('click', () => show(current - 1));
  document.querySelector('.tipbar').hidden = false;
  show(current);
})();
