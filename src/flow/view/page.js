'use strict';
// Draws the schedule on a canvas and keeps it, the source and the figures in step.
(() => {
  const data = JSON.parse(document.getElementById('data').textContent);
  const bars = data.bars;
  const at = (id) => document.getElementById(id);
  const canvas = at('picture');
  const pen = canvas.getContext('2d');
  const narrow = new Set(['conversion', 'normalization']);
  const kind_name = (bar) => data.kinds[bar.kind][0];

  const readers = bars.map(() => []);
  const lanes = Array.from({ length: data.lanes }, () => []);
  const of_line = new Map();  // "file:line" to bars
  bars.forEach((bar, index) => {
    bar.operands.forEach((operand) => readers[operand].push(index));
    lanes[bar.lane].push(index);
    if (bar.line) {
      const key = bar.file + ':' + bar.line;
      of_line.set(key, (of_line.get(key) || []).concat(index));
    }
  });

  // ---- What is looked at ----

  const state = { chosen: -1, hovered: -1, lit: new Set(), critical: false };
  const view = { x: 0, y: 0, cycle: 20, lane: 20 };  // pixels: origin of cycle 0 and lane 0, size of a cycle and a lane
  const top_margin = 22;
  let colour = {};
  let size = { width: 0, height: 0 };
  let waiting = false;

  function read_colours() {
    const style = getComputedStyle(document.documentElement);
    const names = ['paper', 'ink', 'faint', 'line', 'fifth', 'delay', 'path', 'chosen', 'name'];
    colour = {};
    names.concat(data.kinds.map((kind) => kind[0]))
      .forEach((name) => { colour[name] = style.getPropertyValue('--' + name).trim(); });
  }

  function show_all() {
    view.cycle = Math.max(0.02, Math.min(48, (size.width - 60) / (data.latency + 2.5)));
    view.lane = Math.max(0.02, Math.min(26, (size.height - top_margin - 44) / Math.max(1, data.lanes)));
    view.x = 30 + view.cycle;
    view.y = top_margin + 4;
    ask_for_drawing();
  }

  const x_of = (cycle) => view.x + cycle * view.cycle;
  const y_of = (lane) => view.y + lane * view.lane;

  function zoom(factor, x, y) {
    const limited = Math.min(factor, 120 / view.cycle, 60 / Math.min(view.lane, 59));
    const cycle = (x - view.x) / view.cycle;
    const lane = (y - view.y) / view.lane;
    view.cycle = Math.max(0.02, view.cycle * limited);
    view.lane = Math.max(0.02, Math.min(60, view.lane * limited));
    view.x = x - cycle * view.cycle;
    view.y = y - lane * view.lane;
    ask_for_drawing();
  }

  function bring_into_view(bar) {
    const x = x_of((bar.start + bar.end) / 2);
    const y = y_of(bar.lane + 0.5);
    if (view.lane < 12) {
      zoom(16 / view.lane, x, y);
    }
    if (x < 40 || x > size.width - 40) view.x += size.width / 2 - x;
    if (y < top_margin + 20 || y > size.height - 30) view.y += size.height / 2 - y;
    ask_for_drawing();
  }

  // ---- Drawing ----

  function ask_for_drawing() {
    if (!waiting) {
      waiting = true;
      requestAnimationFrame(draw);
    }
  }

  function draw_cycles() {
    const steps = [1, 5, 10, 50, 100, 500, 1000, 5000, 10000];
    const fine = steps.find((step) => step * view.cycle >= 7) || 10000;
    const told = steps.find((step) => step * view.cycle >= 34) || 10000;
    pen.font = '11px system-ui, sans-serif';
    pen.textAlign = 'center';
    const first = Math.max(0, Math.ceil(-view.x / view.cycle / fine) * fine);
    const last = Math.min(data.latency, (size.width - view.x) / view.cycle);
    for (let cycle = first; cycle <= last; cycle += fine) {
      const x = Math.round(x_of(cycle)) + 0.5;
      pen.strokeStyle = cycle % told === 0 ? colour.fifth : colour.line;
      pen.beginPath();
      pen.moveTo(x, top_margin);
      pen.lineTo(x, size.height);
      pen.stroke();
      if (cycle % told === 0) {
        pen.fillStyle = colour.faint;
        pen.fillText(cycle, x, 14);
      }
    }
  }

  function is_dim(index) {
    if (state.critical) return !bars[index].path;
    return state.lit.size > 0 && !state.lit.has(index);
  }

  function draw_delay(bar) {
    if (bar.last <= bar.end) return;
    const x = x_of(bar.end);
    const length = (bar.last - bar.end) * view.cycle;
    const y = y_of(bar.lane + 0.5);
    pen.fillStyle = colour.delay;
    pen.fillRect(x, y - 0.5, length, Math.max(0.6, Math.min(2, view.lane / 8)));
    if (view.lane >= 14 && length > 40) {
      pen.font = '10px system-ui, sans-serif';
      pen.textAlign = 'center';
      pen.fillStyle = colour.faint;
      pen.fillText(bar.width + ' bits', x + length / 2, y - 3);
    }
  }

  function box_of(bar) {
    const share = narrow.has(kind_name(bar)) ? 0.46 : 0.78;
    const height = Math.max(1, view.lane * share);
    return {
      x: x_of(bar.start), y: y_of(bar.lane + 0.5) - height / 2, height,
      width: Math.max(bar.end === bar.start ? 2 : 1, (bar.end - bar.start) * view.cycle - (view.cycle > 4 ? 1 : 0)),
    };
  }

  function draw_bar(bar, index) {
    const box = box_of(bar);
    pen.fillStyle = colour[kind_name(bar)];
    pen.fillRect(box.x, box.y, box.width, box.height);
    if (index === state.chosen || bar.path) {
      pen.strokeStyle = index === state.chosen ? colour.chosen : colour.path;
      pen.lineWidth = view.lane > 6 ? 2 : 1;
      pen.strokeRect(box.x, box.y, box.width, box.height);
      pen.lineWidth = 1;
    }
    if (box.height >= 11 && box.width >= 24) {
      pen.font = '11px system-ui, sans-serif';
      pen.textAlign = 'left';
      pen.fillStyle = colour.name;
      const most = Math.floor((box.width - 8) / 6.2);
      const name = bar.name.length > most ? bar.name.slice(0, Math.max(1, most - 1)) + '…' : bar.name;
      pen.fillText(name, box.x + 4, box.y + box.height / 2 + 4);
    }
  }

  function draw_edge(from, to) {
    const x1 = x_of(bars[from].end), y1 = y_of(bars[from].lane + 0.5);
    const x2 = x_of(bars[to].start), y2 = y_of(bars[to].lane + 0.5);
    const bend = Math.max(12, (x2 - x1) / 2);
    pen.beginPath();
    pen.moveTo(x1, y1);
    pen.bezierCurveTo(x1 + bend, y1, x2 - bend, y2, x2, y2);
    pen.stroke();
  }

  function draw() {
    waiting = false;
    const begin = performance.now();
    const scale = window.devicePixelRatio || 1;
    pen.setTransform(scale, 0, 0, scale, 0, 0);
    pen.fillStyle = colour.paper;
    pen.fillRect(0, 0, size.width, size.height);
    draw_cycles();
    const first = Math.max(0, Math.floor((top_margin - view.y) / view.lane));
    const last = Math.min(data.lanes - 1, Math.floor((size.height - view.y) / view.lane));
    let drawn = 0;
    for (let lane = first; lane <= last; ++lane) {
      for (const index of lanes[lane]) {
        const bar = bars[index];
        if (x_of(bar.last) < 0 && x_of(bar.end) < 0) continue;
        if (x_of(bar.start) > size.width) break;
        pen.globalAlpha = is_dim(index) ? 0.22 : 1;
        draw_delay(bar);
        draw_bar(bar, index);
        ++drawn;
      }
    }
    pen.globalAlpha = 1;
    pen.strokeStyle = colour.chosen;
    for (const index of new Set([state.hovered, state.chosen])) {
      if (index < 0) continue;
      bars[index].operands.forEach((operand) => draw_edge(operand, index));
      readers[index].forEach((reader) => draw_edge(index, reader));
    }
    canvas.dataset.view = [view.x, view.y, view.cycle, view.lane].join(' ');
    canvas.dataset.drawn = drawn;
    canvas.dataset.milliseconds = (performance.now() - begin).toFixed(1);
  }

  // ---- Choosing ----

  /// The bar under a point, else the one whose delay line is, else one a few pixels away; -1 for none.
  function bar_at(x, y) {
    const lane = Math.floor((y - view.y) / view.lane);
    const near = Math.max(0, Math.ceil(3 / view.lane) - 1);
    const ends = [
      (bar, box) => [box.x, box.x + box.width], (bar) => [x_of(bar.start), x_of(bar.last)],
      (bar, box) => [box.x - 3, Math.max(box.x + box.width, x_of(bar.last)) + 3]];
    for (const end of ends) {
      for (let way = 0; way <= near; ++way) {
        for (const row of way === 0 ? [lane] : [lane - way, lane + way]) {
          const found = (lanes[row] || []).find((index) => {
            const [from, to] = end(bars[index], box_of(bars[index]));
            return x >= from && x <= to;
          });
          if (found !== undefined) return found;
        }
      }
    }
    return -1;
  }

  function light_lines(keys, scroll) {
    document.querySelectorAll('pre .lit').forEach((line) => line.classList.remove('lit'));
    keys.forEach((key) => {
      const line = document.querySelector('[data-key="' + key + '"]');
      if (line) {
        line.classList.add('lit');
        if (scroll) line.scrollIntoView({ block: 'nearest' });
      }
    });
  }

  function choose(index) {
    state.chosen = index;
    state.lit = new Set(index < 0 ? [] : [index, ...bars[index].operands, ...readers[index]]);
    light_lines(index >= 0 && bars[index].line ? [bars[index].file + ':' + bars[index].line] : [], true);
    tell(index);
    remember();
  }

  function choose_line(key) {
    state.chosen = -1;
    state.lit = new Set(of_line.get(key));
    light_lines([key], false);
    const list = [...state.lit];
    at('details').replaceChildren(element('h2', 'Line ' + key.split(':')[1] + ': ' + list.length + ' operations'),
      table(list.slice(0, 40).map((one) => [bars[one].name, bars[one].operation, bars[one].component, cycles(bars[one])])));
    remember();
    if (list.length > 0 && !list.some((one) => is_visible(bars[one]))) bring_into_view(bars[list[0]]);
  }

  function is_visible(bar) {
    const x = x_of(bar.start), y = y_of(bar.lane);
    return x > 0 && x < size.width && y > top_margin && y < size.height;
  }

  /// What tests and style sheets read of the state.
  function remember() {
    canvas.dataset.chosen = state.chosen < 0 ? '' : bars[state.chosen].name;
    canvas.dataset.lit = [...state.lit].map((index) => bars[index].name).join(' ');
    canvas.dataset.critical = state.critical;
    at('critical').setAttribute('aria-pressed', state.critical);
    ask_for_drawing();
  }

  // ---- Words ----

  function element(name, text, style) {
    const made = document.createElement(name);
    made.textContent = text === undefined ? '' : text;
    if (style) made.className = style;
    return made;
  }

  function table(rows) {
    const made = document.createElement('table');
    rows.forEach((row) => {
      const line = made.insertRow();
      row.forEach((cell) => {
        const place = line.insertCell();
        if (cell instanceof Node) place.append(cell); else place.textContent = cell;
        if (typeof cell === 'number') place.className = 'number';
      });
    });
    return made;
  }

  const cycles = (bar) => bar.start < 0 ? 'input' : 'cycles ' + bar.start + ' to ' + bar.end;

  function tell(index) {
    if (index < 0) {
      at('details').replaceChildren(element('p', 'Click an operation or a line.'));
      return;
    }
    const bar = bars[index];
    const list = document.createElement('dl');
    const row = (name, text) => { if (text !== '' && text !== undefined) list.append(element('dt', name), element('dd', text)); };
    row('operation', bar.operation);
    row('component', bar.component);
    row('format', bar.format + ', ' + bar.width + ' bits');
    row('time', cycles(bar) + (bar.end > bar.start && bar.start >= 0 ? ', latency ' + (bar.end - bar.start) : ''));
    if (bar.last > bar.end) row('delayed', (bar.last - bar.end) + ' cycles, ' + (bar.last - bar.end) * bar.width + ' register bits');
    row('critical path', bar.path ? 'on the marked path' : bar.slack === 0 ? 'as long as the marked one' : bar.slack + ' cycles of slack');
    row('source', bar.text);
    row('drives', (bar.outputs || []).join(', '));
    at('details').replaceChildren(element('h2', bar.name), list);
  }

  function write_figures() {
    at('figures').textContent = 'latency ' + data.latency + ' cycles, ' + bars.filter((bar) => bar.component).length +
      ' components, ' + data.register_bits + ' register bits in delays (' + data.register_bits_soonest + ' as soon as possible)';
    const used = new Set(bars.map((bar) => bar.kind));
    data.kinds.forEach(([name, text], number) => {
      if (!used.has(number)) return;
      const sign = element('span', text);
      sign.style.setProperty('--kind', 'var(--' + name + ')');
      at('legend').append(sign);
    });
    const share = (cycles_of, name) => {
      const bar = element('span', '', 'bar');
      bar.style.setProperty('--kind', 'var(--' + name + ')');
      bar.style.width = (data.latency ? 7 * cycles_of / data.latency : 0) + 'em';
      return bar;
    };
    at('latency').append(element('h2', 'Latency of the critical path'), table([
      ['arithmetic', data.arithmetic, share(data.arithmetic, 'sum')],
      ['conversions', data.conversion, share(data.conversion, 'conversion')],
      ['normalisation', data.normalization, share(data.normalization, 'normalization')]]));
    const delayed = bars.filter((bar) => bar.last > bar.end)
      .sort((a, b) => (b.last - b.end) * b.width - (a.last - a.end) * a.width);
    at('registers').append(element('h2', 'Register bits by value'), table(delayed.slice(0, 12)
      .map((bar) => [bar.name, (bar.last - bar.end) * bar.width, bar.width + ' bits x ' + (bar.last - bar.end)])));
    const rows = (ports, way) => ports.map((port) => [way, port.name, port.format, port.c]);
    at('ports').append(element('h2', 'Ports'), table(rows(data.inputs, 'input').concat(rows(data.outputs, 'output'))));
  }

  function write_source() {
    data.files.forEach((file, number) => {
      const text = document.createElement('pre');
      file.text.replace(/\n$/, '').split('\n').forEach((content, index) => {
        const key = number + ':' + (index + 1);
        const line = element('div', content);
        line.dataset.line = index + 1;
        line.dataset.key = key;
        if (of_line.has(key)) {
          line.className = 'has';
          line.tabIndex = 0;
          line.setAttribute('role', 'button');
        }
        text.append(line);
      });
      at('files').append(element('h2', file.name), text);
    });
  }

  // ---- Events ----

  function resize() {
    const box = at('schedule').getBoundingClientRect();
    const scale = window.devicePixelRatio || 1;
    size = { width: box.width, height: box.height };
    canvas.width = Math.round(box.width * scale);
    canvas.height = Math.round(box.height * scale);
  }

  function neighbour(index, way) {
    const bar = bars[index];
    for (let lane = bar.lane + way; lane >= 0 && lane < data.lanes; lane += way) {
      const found = lanes[lane].find((one) => bars[one].last >= bar.start && bars[one].start <= bar.end);
      if (found !== undefined) return found;
    }
    return index;
  }

  function on_key(event) {
    const chosen = state.chosen;
    const moves = {
      ArrowLeft: () => bars[chosen].operands[0],
      ArrowRight: () => readers[chosen][0],
      ArrowUp: () => neighbour(chosen, -1),
      ArrowDown: () => neighbour(chosen, 1),
    };
    const middle = [size.width / 2, size.height / 2];
    if (moves[event.key]) {
      const next = chosen < 0 ? 0 : moves[event.key]();
      if (next !== undefined && bars[next]) {
        choose(next);
        bring_into_view(bars[next]);
      }
    } else if (event.key === '+' || event.key === '=') {
      zoom(1.4, ...middle);
    } else if (event.key === '-') {
      zoom(1 / 1.4, ...middle);
    } else if (event.key === '0') {
      show_all();
    } else if (event.key === 'c') {
      toggle_critical();
    } else if (event.key === 'Escape') {
      state.critical = false;
      choose(-1);
    } else {
      return;
    }
    event.preventDefault();
  }

  function toggle_critical() {
    state.critical = !state.critical;
    remember();
  }

  let drag = null;
  canvas.addEventListener('pointerdown', (event) => {
    drag = { x: event.offsetX, y: event.offsetY, moved: false };
    canvas.setPointerCapture(event.pointerId);
  });
  canvas.addEventListener('pointermove', (event) => {
    if (drag) {
      drag.moved = drag.moved || Math.hypot(event.offsetX - drag.x, event.offsetY - drag.y) > 4;
      if (drag.moved) {
        view.x += event.movementX;
        view.y += event.movementY;
        ask_for_drawing();
      }
      return;
    }
    const index = bar_at(event.offsetX, event.offsetY);
    if (index !== state.hovered) {
      state.hovered = index;
      ask_for_drawing();
    }
    const hint = at('hint');
    hint.hidden = index < 0;
    if (index >= 0) {
      const bar = bars[index];
      hint.textContent = bar.name + ', ' + bar.operation + ', ' + cycles(bar) + (bar.text ? '\n' + bar.text : '');
      hint.style.left = Math.min(event.offsetX + 14, Math.max(0, size.width - 260)) + 'px';
      hint.style.top = Math.min(event.offsetY + 14, size.height - 50) + 'px';
    }
  });
  canvas.addEventListener('pointerup', (event) => {
    if (drag && !drag.moved) choose(bar_at(event.offsetX, event.offsetY));
    drag = null;
  });
  canvas.addEventListener('pointerleave', () => {
    state.hovered = -1;
    at('hint').hidden = true;
    ask_for_drawing();
  });
  canvas.addEventListener('wheel', (event) => {
    event.preventDefault();
    zoom(Math.exp(-event.deltaY / 400), event.offsetX, event.offsetY);
  }, { passive: false });
  canvas.addEventListener('keydown', on_key);
  const line_of = (event) => event.target.closest('pre .has');
  at('files').addEventListener('click', (event) => { if (line_of(event)) choose_line(line_of(event).dataset.key); });
  at('files').addEventListener('keydown', (event) => {
    if (line_of(event) && (event.key === 'Enter' || event.key === ' ')) {
      event.preventDefault();
      choose_line(line_of(event).dataset.key);
    }
  });
  at('nearer').addEventListener('click', () => zoom(1.4, size.width / 2, size.height / 2));
  at('farther').addEventListener('click', () => zoom(1 / 1.4, size.width / 2, size.height / 2));
  at('whole').addEventListener('click', show_all);
  at('critical').addEventListener('click', toggle_critical);
  const divide = (x) => {
    document.documentElement.style.setProperty('--source', Math.max(0, Math.min(80, 100 * x / window.innerWidth)) + '%');
  };
  at('divider').addEventListener('pointerdown', (event) => at('divider').setPointerCapture(event.pointerId));
  at('divider').addEventListener('pointermove', (event) => { if (event.buttons) divide(event.clientX); });
  at('divider').addEventListener('keydown', (event) => {
    const way = { ArrowLeft: -30, ArrowRight: 30 }[event.key];
    if (way) divide(at('divider').getBoundingClientRect().left + way);
  });
  new ResizeObserver(() => { resize(); ask_for_drawing(); }).observe(at('schedule'));
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => { read_colours(); ask_for_drawing(); });
  window.addEventListener('beforeprint', () => { resize(); show_all(); draw(); });

  read_colours();
  write_figures();
  write_source();
  resize();
  show_all();
  remember();
})();
