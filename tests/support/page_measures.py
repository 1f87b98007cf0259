"""What is measured of a page in a browser, as expressions in JavaScript."""

# What measures of colour share: the contrast of two colours, and what lies behind an element.
COLOURS = """
  const parse = text => {
    const numbers = text.match(/[\\d.]+/g).map(Number);
    return numbers.length < 4 ? [...numbers.slice(0, 3), 1] : numbers;
  };
  const over = (top, below) => [0, 1, 2].map(i => top[i] * top[3] + below[i] * (1 - top[3]));
  const luminance = rgb => {
    const [r, g, b] = rgb.map(c => c / 255).map(
      c => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
  };
  const contrast = (a, b) => {
    const [light, dark] = [luminance(a), luminance(b)].sort((a, b) => b - a);
    return (light + 0.05) / (dark + 0.05);
  };
  const behind = element => {
    if (!element) return [255, 255, 255];
    const style = getComputedStyle(element);
    if (style.backgroundImage !== 'none') throw 'text over an image: ' + element.outerHTML;
    return over(parse(style.backgroundColor), behind(element.parentElement));
  };
"""

# Each visible text with the contrast between its colour and what lies behind it.
CONTRASTS = """
(() => {""" + COLOURS + """
  const results = [];
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    const text = walker.currentNode.textContent.trim();
    const element = walker.currentNode.parentElement;
    const style = getComputedStyle(element);
    if (!text || element.closest('.unseen') || style.fontSize === '0px') continue;
    const below = behind(element);
    const ink = over(parse(style.color), below);
    const size = parseFloat(style.fontSize);
    const large = size >= 24 || (size >= 18.66 && style.fontWeight >= 700);
    results.push({text: text.slice(0, 40), ratio: contrast(ink, below),
                  needed: large ? 3 : 4.5});
  }
  return results;
})()
"""

# All that stand side by side in a figure, and the contrast between them: of the areas, or of the
# edge that divides them. An area of two colours, one over the other, has the better of the two.
NEIGHBOURS = """
(() => {""" + COLOURS + """
  const colours = element => {
    const style = getComputedStyle(element);
    const found = style.backgroundImage === 'none' ? [style.backgroundColor]
                                                   : style.backgroundImage.match(/rgb\\([^)]*\\)/g);
    if (parseFloat(style.borderRightWidth) || parseFloat(style.borderLeftWidth))
      found.push(parseFloat(style.borderRightWidth) ? style.borderRightColor
                                                    : style.borderLeftColor);
    return found.map(text => parse(text).slice(0, 3));
  };
  const best = (a, b) => Math.max(...a.flatMap(x => b.map(y => contrast(x, y))));
  const pairs = {};
  document.querySelectorAll('.strip').forEach(strip => {
    for (let bar = strip.firstElementChild; bar && bar.nextElementSibling;
         bar = bar.nextElementSibling) {
      const names = [bar.className, bar.nextElementSibling.className].sort().join(' ');
      pairs[names] = best(colours(bar), colours(bar.nextElementSibling));
    }
  });
  return pairs;
})()
"""

# The contrast of each kind of certainty with the page and with the kind before it.
CERTAINTIES = """
(() => {""" + COLOURS + """
  const page = behind(document.body);
  const swatch = name => {
    const style = getComputedStyle(document.querySelector('.legend .' + name));
    return {fill: parse(style.backgroundColor).slice(0, 3),
            edge: parse(style.borderTopColor).slice(0, 3)};
  };
  const [once, some, often] = ['once', 'some', 'often'].map(swatch);
  return {onceIsHollow: contrast(once.fill, page), onceHasEdge: contrast(once.edge, page),
          some: contrast(some.fill, page), often: contrast(often.fill, page),
          someFromOften: contrast(some.fill, often.fill)};
})()
"""

SEMANTICS = """
(() => {
  const wrong = [];
  const all = selector => [...document.querySelectorAll(selector)];
  const need = (condition, what) => { if (!condition) wrong.push(what); };
  need(document.documentElement.lang === 'en', 'no language');
  need(document.title, 'no title');
  need(all('h1').length === 1 && all('main').length === 1, 'not one h1 and main');
  need(!all('script, iframe, object, img[src], link[rel=stylesheet]').length, 'loads something');
  all('table').forEach(t => need(t.caption && t.caption.textContent, 'table without caption'));
  all('th').forEach(h => need(h.scope, 'header without scope: ' + h.textContent));
  all('tbody tr').forEach(r => need(r.cells[0].tagName === 'TH',
                                    'row without header'));
  all('[role=img], [role=region]').forEach(i => need(i.getAttribute('aria-label'), 'picture without label'));
  all('section').forEach(s => {
    need(document.getElementById(s.getAttribute('aria-labelledby')), 'section without name');
    need(s.querySelector('.explanation').textContent.trim().endsWith('.'), 'no sentence: ' + s.id);
  });
  const ids = all('[id]').map(e => e.id);
  need(new Set(ids).size === ids.length, 'an id twice');
  let level = 0;
  all('h1, h2, h3').forEach(h => {
    need(h.tagName[1] <= level + 1, 'heading leaves out a level: ' + h.textContent);
    level = +h.tagName[1];
  });
  return wrong;
})()
"""

# Elements that reach beyond the page's margin, and are neither cut off nor in a part of the page that
# scrolls by itself.
OVERFLOWING = """
[...document.body.querySelectorAll('*')].filter(
  e => !e.closest('.strip, .unseen, .wide *') && e.getBoundingClientRect().right >
    innerWidth - parseFloat(getComputedStyle(document.body).paddingRight) + 0.5
).map(e => e.outerHTML.slice(0, 80))
"""
