// Tries the page out as its user does and writes what it finds, as JSON, into the title, or hands it
// to the page that this one is shown in. The browser prints the title once the page has loaded: a
// document that is left open until then holds that up.
'use strict';
const failures = [];
addEventListener('error', event => failures.push(event.target.src || event.message), true);
addEventListener('unhandledrejection', event => failures.push(String(event.reason)));
addEventListener('securitypolicyviolation', event => failures.push(event.blockedURI));

function hold() {
  const frame = document.createElement('iframe');
  frame.hidden = true;
  document.body.append(frame);
  frame.contentDocument.open();
  return () => frame.contentDocument.close();
}

function happens(target, name) {
  return new Promise(resolve => {
    target.addEventListener(name, () => resolve(true), {once: true});
    setTimeout(() => resolve(false), 5000);
  });
}

async function factsOfCard(card) {
  const image = card.querySelector('img');
  const film = card.querySelector('video');
  const decoded = await image.decode().then(() => true, () => false);
  film.preload = 'auto';
  if (film.readyState < 2) await happens(film, 'loadeddata');
  return {
    name: card.querySelector('h2').textContent,
    decoded,
    image: [image.naturalWidth, image.naturalHeight],
    film: [film.videoWidth, film.videoHeight],
    ready: film.readyState,
    seconds: film.duration,
    focusable: card.querySelector('.stage').tagName === 'BUTTON',
  };
}

const states = () => [...document.querySelectorAll('.card')].map(
    card => card.querySelector('.stage').getAttribute('aria-pressed') === 'true' &&
        !card.querySelector('video').paused);

function point(button, name, pointerType) {
  button.dispatchEvent(new PointerEvent(name, {pointerType}));
  return states();
}

async function factsOfPlaying() {
  const [first, second] = document.querySelectorAll('.stage');
  const film = first.querySelector('video');
  const facts = {hover: point(first, 'pointerenter', 'mouse')};
  facts.away = point(first, 'pointerleave', 'mouse');
  facts.touch = point(first, 'pointerenter', 'touch');
  const playing = happens(film, 'playing');
  first.click();
  facts.click = states();
  facts.started = await playing;
  facts.shown = first.parentElement.classList.contains('playing');
  facts.muted = film.muted;
  document.getElementById('sound').click();
  facts.mutedWithSound = film.muted;
  document.getElementById('sound').click();
  first.click();
  facts.clickAgain = states();
  first.focus();
  facts.focus = states();
  second.focus();
  facts.focusNext = states();
  second.blur();
  facts.blur = states();
  return facts;
}

function factsOfFilter(texts) {
  const filter = document.getElementById('filter');
  const facts = texts.map(text => {
    filter.value = text;
    filter.dispatchEvent(new Event('input'));
    const shown = [...document.querySelectorAll('.card')].filter(card => card.offsetHeight > 0);
    return {
      text,
      shown: shown.map(card => card.querySelector('h2').textContent),
      count: document.getElementById('count').textContent,
      empty: document.getElementById('empty').offsetHeight > 0,
    };
  });
  return facts;
}

// The ratio of WCAG 2, 1 to 21, between an element's text and what is behind it.
function contrast(element) {
  const luminance = colour => {
    const [r, g, b] = colour.match(/[\d.]+/g).slice(0, 3).map(Number).map(byte => {
      const share = byte / 255;
      return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  let behind = element;
  while (getComputedStyle(behind).backgroundColor === 'rgba(0, 0, 0, 0)') {
    behind = behind.parentElement;
  }
  const pair = [getComputedStyle(element).color, getComputedStyle(behind).backgroundColor]
                   .map(luminance).sort((a, b) => b - a);
  return (pair[0] + 0.05) / (pair[1] + 0.05);
}

async function probe() {
  const release = hold();
  const facts = {failures};
  try {
    facts.cards = await Promise.all([...document.querySelectorAll('.card')].map(factsOfCard));
    facts.playing = await factsOfPlaying();
    facts.filter = factsOfFilter(['BARS', 'fx line', 'no such', '']);
    document.querySelectorAll('details').forEach(details => details.open = true);
    facts.width = document.documentElement.scrollWidth;
    facts.background = getComputedStyle(document.body).backgroundColor;
    const texts = 'h1, h2, p, code, summary, th, td, small, input, .sound, footer';
    facts.contrast =
        Math.min(...[...document.querySelectorAll(texts)].filter(e => e.offsetHeight).map(contrast));
    facts.elements = document.querySelectorAll('.names *, table *').length;
  } catch (error) {
    failures.push(String(error));
  }
  document.title = JSON.stringify(facts);
  if (parent !== window) parent.postMessage(document.title, '*');
  release();
}

addEventListener('DOMContentLoaded', probe);
