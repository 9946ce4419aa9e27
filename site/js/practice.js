// SPDX-License-Identifier: GPL-3.0-or-later
// Practice with endless tasks. The page names its kind of task in data-practice. A task is an object with `ask` (text),
// `answer` (text), and if it has them `picture` (an element), `choices` (texts), `hint` (text) and `lang` (of the choices).
'use strict';

(() => {
  const upTo = (most, least = 0) => least + Math.floor(Math.random() * (most - least + 1));
  const oneOf = (list) => list[upTo(list.length - 1)];
  const mixed = (list) => {
    const left = [...list];
    const order = [];
    while (left.length > 0) {
      order.push(...left.splice(upTo(left.length - 1), 1));
    }
    return order;
  };
  // The answer among others, without repeats.
  const choicesWith = (answer, others, count) =>
    mixed([answer, ...mixed([...new Set(others)].filter((other) => other !== answer)).slice(0, count - 1)]);

  const svg = (name, attributes, parent) => {
    const element = document.createElementNS('http://www.w3.org/2000/svg', name);
    Object.entries(attributes).forEach(([key, value]) => element.setAttribute(key, value));
    if (parent) {
      parent.append(element);
    }
    return element;
  };
  const drawing = (label) => svg('svg', {viewBox: '0 0 200 200', width: 200, height: 200, role: 'img', 'aria-label': label});
  const onCircle = (radius, turn) => [100 + radius * Math.sin(turn * 2 * Math.PI), 100 - radius * Math.cos(turn * 2 * Math.PI)];

  const sums = (level) => {
    const most = [0, 10, 20, 100][level];
    const total = upTo(most, 2);
    const first = upTo(total - 1, 1);
    if (level > 1 && Math.random() < 0.5) {
      return {ask: total + ' − ' + first + ' = ?', answer: String(total - first),
        hint: 'Count on from ' + first + ' until you reach ' + total + '.'};
    }
    return {ask: first + ' + ' + (total - first) + ' = ?', answer: String(total),
      hint: 'Start with the bigger number and count on.'};
  };

  const times = (level) => {
    const table = oneOf([[], [2, 5, 10], [3, 4, 6], [7, 8, 9]][level]);
    const count = upTo(10, 1);
    return {ask: count + ' × ' + table + ' = ?', answer: String(count * table),
      hint: count + ' × ' + table + ' is ' + table + ', taken ' + (count === 1 ? 'once' : count + ' times') + '.'};
  };

  const clockFace = (hour, minute) => {
    const face = drawing('a clock: its hands are described by the answers');
    svg('circle', {cx: 100, cy: 100, r: 94, fill: '#fff', stroke: '#0B7285', 'stroke-width': 7}, face);
    for (let number = 1; number <= 12; number += 1) {
      const [x, y] = onCircle(74, number / 12);
      svg('text', {x, y: y + 7, 'text-anchor': 'middle', 'font-size': 20, 'font-weight': 700, fill: '#12394A'}, face)
        .textContent = number;
    }
    const hand = (turn, length, width, colour) => {
      const [x2, y2] = onCircle(length, turn);
      svg('line', {x1: 100, y1: 100, x2, y2, stroke: colour, 'stroke-width': width, 'stroke-linecap': 'round'}, face);
    };
    hand((hour % 12 + minute / 60) / 12, 40, 9, '#B23522');
    hand(minute / 60, 58, 6, '#1F5BA6');
    svg('circle', {cx: 100, cy: 100, r: 8, fill: '#12394A'}, face);
    face.setAttribute('aria-label', 'a clock. The short hand is ' + (minute === 0 ? 'at ' : 'past ') + hour +
      ', the long hand at ' + (minute === 0 ? 12 : minute / 5));
    return face;
  };
  const timeText = (hour, minute) => hour + ':' + String(minute).padStart(2, '0');
  const clock = (level) => {
    const step = [0, 60, 15, 5][level];
    const time = () => [upTo(12, 1), upTo(60 / step - 1) * step];
    const [hour, minute] = time();
    const others = Array.from({length: 30}, () => timeText(...time()));
    return {ask: 'What time is it?', picture: clockFace(hour, minute), answer: timeText(hour, minute),
      choices: choicesWith(timeText(hour, minute), others, 4),
      hint: 'Read the short red hand first: it tells the hour. The long blue hand tells the minutes, five for each number.'};
  };

  const pizza = (pieces, eaten) => {
    const plate = drawing('a pizza cut into ' + pieces + ' equal pieces, ' + eaten + ' of them yellow');
    svg('circle', {cx: 100, cy: 100, r: 90, fill: '#FFF2D0', stroke: '#925105', 'stroke-width': 4}, plate);
    for (let piece = 0; piece < pieces; piece += 1) {
      const [x1, y1] = onCircle(88, piece / pieces);
      const [x2, y2] = onCircle(88, (piece + 1) / pieces);
      svg('path', {d: 'M100 100 L' + x1 + ' ' + y1 + ' A88 88 0 0 1 ' + x2 + ' ' + y2 + ' Z',
        fill: piece < eaten ? '#FFC533' : '#FFF2D0', stroke: '#925105', 'stroke-width': 3}, plate);
    }
    return plate;
  };
  const fractions = (level) => {
    const piecesOf = () => upTo([0, 4, 6, 10][level], 2);
    const fraction = () => {
      const pieces = piecesOf();
      return [upTo(pieces - 1, 1), pieces];
    };
    const [eaten, pieces] = fraction();
    const answer = eaten + '/' + pieces;
    // Another name of the same amount would be right too, so it is never offered.
    const others = Array.from({length: 40}, fraction)
      .filter(([other, cut]) => other * pieces !== eaten * cut).map((other) => other.join('/'));
    return {ask: 'How much of the pizza is yellow?', picture: pizza(pieces, eaten), answer,
      choices: choicesWith(answer, others, 3),
      hint: 'Below the line: how many pieces are there? Above the line: how many of them are yellow?'};
  };

  const words = [['sun', 'el sol'], ['moon', 'la luna'], ['star', 'la estrella'], ['house', 'la casa'],
    ['tree', 'el árbol'], ['flower', 'la flor'], ['fish', 'el pez'], ['cat', 'el gato'], ['apple', 'la manzana'],
    ['ball', 'la pelota'], ['book', 'el libro'], ['boat', 'el barco']];
  const pictureOf = (english) => {
    const picture = document.createElement('img');
    picture.src = '/img/words/' + english + '.svg';
    picture.alt = english;
    picture.width = 140;
    picture.height = 140;
    return picture;
  };
  const vocabulary = (level) => {
    const [english, spanish] = oneOf(words);
    const count = [0, 3, 4, 6][level];
    if (level === 3) {
      return {ask: 'What is “' + spanish + '” in English?', answer: english,
        choices: choicesWith(english, words.map((word) => word[0]), count), hint: 'Say it aloud. Which picture comes to your mind?'};
    }
    return {ask: 'What is “' + english + '” in Spanish?', picture: pictureOf(english), answer: spanish, lang: 'es',
      choices: choicesWith(spanish, words.map((word) => word[1]), count), hint: 'Look it up in the picture book above.'};
  };

  const letters = (level) => {
    const [english, spanish] = oneOf(words);
    const word = level === 1 ? english : spanish.split(' ')[1];
    const place = upTo(word.length - 1);
    const answer = word[place];
    const shown = word.slice(0, place) + '_' + word.slice(place + 1);
    const choices = level === 3 ? undefined : choicesWith(answer, [...'aeioulmnrst'], 4);
    return {ask: shown, picture: pictureOf(english), answer, choices, lang: level === 1 ? 'en' : 'es',
      hint: level === 1 ? 'Say the word slowly and listen to each letter.' : 'The whole word is in the picture book.'};
  };

  const kinds = {sums, times, clock, fractions, vocabulary, letters};

  document.querySelectorAll('[data-practice]').forEach((box) => {
    const make = kinds[box.dataset.practice];
    const find = (selector) => box.querySelector(selector);
    const reply = find('form');
    const field = find('input');
    const next = find('.next');
    let level = 1;
    let task = null;
    let stars = 0;
    let tries = 0;

    const tell = (text, good) => {
      find('.told').textContent = text;
      find('.told').classList.toggle('good', good);
    };
    const setOpen = (open) => {
      next.hidden = open;
      field.disabled = !open;
      find('.check').disabled = !open;
      find('.choices').querySelectorAll('button').forEach((choice) => { choice.disabled = !open; });
    };

    const judge = (given) => {
      tries += 1;
      const right = given.trim().toLocaleLowerCase() === task.answer;
      if (right) {
        stars += tries === 1 ? 1 : 0;
        find('.stars').textContent = stars;
        tell('Yes, ' + task.answer + (tries === 1 ? '! One star for you.' : '! You found it.'), true);
      } else if (tries < 3) {
        tell('Not yet. ' + task.hint, false);
      } else {
        tell('It is ' + task.answer + '. The next one will be easier for you.', false);
      }
      if (right || tries >= 3) {
        setOpen(false);
        next.focus();
      } else if (!task.choices) {
        field.select();
      }
    };

    const begin = (withFocus) => {
      const before = task === null ? '' : task.ask + task.answer;
      do {
        task = make(level);
      } while (task.ask + task.answer === before);
      tries = 0;
      tell('', true);
      find('.ask-now').textContent = task.ask;
      find('.picture').replaceChildren(...(task.picture ? [task.picture] : []));
      reply.hidden = task.choices !== undefined;
      field.value = '';
      find('.choices').replaceChildren(...(task.choices || []).map((text) => {
        const choice = document.createElement('button');
        choice.type = 'button';
        choice.className = 'btn quiet';
        choice.textContent = text;
        choice.lang = task.lang || 'en';
        choice.addEventListener('click', () => judge(text));
        return choice;
      }));
      setOpen(true);
      if (withFocus) {
        (task.choices ? find('.choices button') : field).focus();
      }
    };

    box.querySelectorAll('[data-level]').forEach((button) => button.addEventListener('click', () => {
      level = Number(button.dataset.level);
      box.querySelectorAll('[data-level]').forEach((other) => other.setAttribute('aria-pressed', String(other === button)));
      begin(false);
    }));
    reply.addEventListener('submit', (event) => {
      event.preventDefault();
      if (field.value.trim() !== '') {
        judge(field.value);
      }
    });
    next.addEventListener('click', () => begin(true));
    box.classList.add('ready');
    begin(false);
  });
})();
