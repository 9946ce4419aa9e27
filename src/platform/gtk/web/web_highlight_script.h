// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra::gtk {

/// The body of a function of `text` and `bound` that puts the places where a page holds the text on a yellow
/// ground; see HtmlDocument::PaintText. It runs in the program's own world, so no script of the page can
/// change what it calls; what it takes from the document it takes through the prototypes, since a page may
/// give its elements the names of these members.
inline constexpr char kHighlightScript[] = R"js(
const parentOf = Object.getOwnPropertyDescriptor(Node.prototype, 'parentNode').get;
const isDrawn = Element.prototype.checkVisibility;
const make = (name) => Document.prototype.createElement.call(document, name);
const kHtml = 'http://www.w3.org/1999/xhtml';
// What these hold is no text of the page, or not for reading.
const kSkipped = new Set(['script', 'style', 'textarea', 'noscript', 'select', 'template', 'iframe', 'object',
                          'audio', 'video', 'canvas', 'title']);

// --- Folding: text of any case and with any blanks, at the same place in the text ---------------------------
const foldOne = (unit) => {
  const low = unit.toLowerCase();
  return low.length === 1 ? low : unit;
};
const fold = (some) => {
  const low = some.toLowerCase();
  return (low.length === some.length ? low : Array.from({length: some.length}, (_, i) => foldOne(some[i])).join(''))
      .replaceAll('\u03c2', '\u03c3');  // a sigma is written in two ways
};
const blanksAsOne = (some) => some.replace(/[\t-\r \u00a0]+/g, ' ');
const isBlank = (code) => code === 32 || (code >= 9 && code <= 13) || code === 160;

const wanted = blanksAsOne(fold(text));
if (wanted === '' || !(bound > 0)) return;

// --- Where to begin ------------------------------------------------------------------------------------------
const selection = window.getSelection();
const isOwn = (range) => {
  const own = globalThis.kivandraPainted;  // what the last painting left selected was not chosen by anybody
  return own !== undefined && own[0] === range.startContainer && own[1] === range.startOffset &&
      own[2] === range.endContainer && own[3] === range.endOffset;
};
let begin = null;
if (selection.rangeCount > 0 && !selection.isCollapsed && !isOwn(selection.getRangeAt(0))) {
  begin = selection.getRangeAt(0).cloneRange();
  begin.collapse(true);
}
/// How much of a text node lies before the beginning; null if all of it does.
const before = (node) => {
  if (begin === null) return 0;
  try {
    if (begin.comparePoint(node, node.length) < 0) return null;
  } catch {
    return 0;  // the selection lies in no part of this tree
  }
  const first = node === begin.startContainer ? begin.startOffset : 0;
  begin = null;
  return first;
};

// --- Finding: runs of text that no block, line break or picture parts ----------------------------------------
const hits = [];  // each a list of [text node, from, to]
let run = [];     // [text node, from] in order
let runText = '';

const placesOf = () => {
  const places = [];
  let blank = true;
  for (const [node, from] of run) {
    const data = node.data;
    for (let at = from; at < data.length; ++at) {
      const isOne = isBlank(data.charCodeAt(at));
      if (isOne && blank) continue;
      blank = isOne;
      places.push([node, at]);
    }
  }
  return places;
};
const addHit = (places, from, to) => {
  const parts = [];
  for (let at = from; at < to; ++at) {
    const [node, offset] = places[at];
    const last = parts[parts.length - 1];
    if (last !== undefined && last[0] === node) {
      last[2] = offset + 1;
    } else {
      parts.push([node, offset, offset + 1]);
    }
  }
  hits.push(parts);
};
const endRun = () => {
  let at = runText.indexOf(wanted);
  if (at >= 0) {
    const places = placesOf();
    for (; at >= 0 && hits.length < bound; at = runText.indexOf(wanted, at + wanted.length)) {
      addHit(places, at, at + wanted.length);
    }
  }
  run = [];
  runText = '';
};

const elements = new Map();  // of every element on the way: the block that it lies in, and whether its text shows
const enter = (element) => {
  const style = getComputedStyle(element);
  const display = style.display;
  const name = element.localName;
  if (element.namespaceURI !== kHtml || kSkipped.has(name) ||
      (display !== 'contents' && !isDrawn.call(element))) {
    if (display !== 'none') endRun();
    return NodeFilter.FILTER_REJECT;
  }
  const inline = display === 'inline' || display === 'contents';
  const outer = elements.get(parentOf.call(element));
  elements.set(element, {block: inline && outer !== undefined ? outer.block : element,
                         shows: style.visibility === 'visible' && (name !== 'details' || element.open)});
  if (!inline || name === 'br' || name === 'img') endRun();
  return NodeFilter.FILTER_ACCEPT;
};

const body = Object.getOwnPropertyDescriptor(Document.prototype, 'body').get.call(document);
if (body === null || enter(body) === NodeFilter.FILTER_REJECT) return;
const walker = Document.prototype.createTreeWalker.call(
    document, body, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT,
    (node) => node.nodeType === Node.ELEMENT_NODE ? enter(node) : NodeFilter.FILTER_ACCEPT);
let block = body;
for (let node = walker.nextNode(); node !== null && hits.length < bound; node = walker.nextNode()) {
  if (!(node instanceof Text)) continue;
  const home = elements.get(parentOf.call(node));
  if (home === undefined || !home.shows) continue;
  if (home.block !== block) {
    endRun();
    block = home.block;
  }
  const from = before(node);
  if (from === null) continue;
  const more = blanksAsOne(fold(node.data.slice(from)));
  runText += more.startsWith(' ') && (runText === '' || runText.endsWith(' ')) ? more.slice(1) : more;
  run.push([node, from]);
}
endRun();
if (hits.length === 0) return;

// --- Painting: each text node is replaced once, whatever the number of places in it ---------------------------
const parts = new Map();  // of each text node: [from, to, whether it belongs to the last hit]
for (const hit of hits) {
  for (const [node, from, to] of hit) {
    if (!parts.has(node)) parts.set(node, []);
    parts.get(node).push([from, to, hit === hits[hits.length - 1]]);
  }
}
const lastSpans = [];
/// A site may forbid style attributes; its pages are painted all the same, by a property.
const paint = (span) => {
  span.setAttribute('style', 'background-color:yellow');
  if (span.style.backgroundColor === '') span.style.backgroundColor = 'yellow';
};
for (const [node, places] of parts) {
  const data = node.data;
  const pieces = [];
  let done = 0;
  for (const [from, to, isLast] of places) {
    if (from > done) pieces.push(data.slice(done, from));
    const span = make('span');
    paint(span);
    span.append(data.slice(from, to));
    pieces.push(span);
    if (isLast) lastSpans.push(span);
    done = to;
  }
  if (done < data.length) pieces.push(data.slice(done));
  node.replaceWith(...pieces);
}

const range = new Range();
range.setStart(lastSpans[0], 0);
range.setEnd(lastSpans[lastSpans.length - 1], 1);
selection.removeAllRanges();
selection.addRange(range);
const left = selection.getRangeAt(0);
globalThis.kivandraPainted = [left.startContainer, left.startOffset, left.endContainer, left.endOffset];
lastSpans[0].scrollIntoView({block: 'nearest'});
)js";

}  // namespace kivandra::gtk
