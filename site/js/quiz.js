// SPDX-License-Identifier: GPL-3.0-or-later
// A quiz with radio buttons: each question is a fieldset whose data-right is the number of the right answer.
'use strict';

document.querySelectorAll('.quiz').forEach((quiz) => {
  const questions = [...quiz.querySelectorAll('fieldset')];
  const result = quiz.querySelector('.result');
  const isRight = (question) => {
    const chosen = question.querySelector('input:checked');
    return chosen !== null && chosen.value === question.dataset.right;
  };

  const tell = (question) => {
    const told = question.querySelector('.told');
    const right = isRight(question);
    told.textContent = right ? 'Yes! ' + question.dataset.why : 'Not yet. Read again and choose once more.';
    told.classList.toggle('good', right);
    const count = questions.filter(isRight).length;
    result.textContent = count === questions.length
      ? 'All ' + count + ' are right. Well done!'
      : count + ' of ' + questions.length + ' are right.';
  };

  questions.forEach((question) => question.addEventListener('change', () => tell(question)));
});
