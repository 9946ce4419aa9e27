// SPDX-License-Identifier: GPL-3.0-or-later
// On which day of the week a date falls.
'use strict';

(() => {
  const days = ['Sunday', 'Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday'];
  const form = document.querySelector('.weekday');
  const told = form.querySelector('.told');
  const numberIn = (name) => Number(form.elements[name].value);

  form.addEventListener('submit', (event) => {
    event.preventDefault();
    const [day, month, year] = [numberIn('day'), numberIn('month'), numberIn('year')];
    const date = new Date(Date.UTC(year, month - 1, day));
    const real = year >= 1900 && year <= 2200 && date.getUTCMonth() === month - 1 && date.getUTCDate() === day;
    told.classList.toggle('good', real);
    told.textContent = real
      ? 'That is a ' + days[date.getUTCDay()] + '.'
      : 'This date is not in the calendar. Look at the day and the year again (1900 to 2200).';
  });
})();
