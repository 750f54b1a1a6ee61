// Generates the shipped completion data in AutoComplete/AC: the catalogue, the word files of HTML,
// CSS, JavaScript and PHP, the two style sheets and the icon strip.
//
//   node generate.mjs <node_modules folder> <php.json> <output folder>
//
// The facts come from npm packages (html-tag-names, html-element-attributes,
// html-enumerated-attributes, html-event-attributes, mdn-data, css-tree, globals), from the
// JavaScript engine that runs this script (members of the standard objects) and from the
// reflection dump of phpdump.php. generate.sh runs the whole chain.

import fs from 'node:fs';
import path from 'node:path';
import {createRequire} from 'node:module';
import {pathToFileURL} from 'node:url';

const [modulesDir, phpJson, outDir] = process.argv.slice(2);
if (!modulesDir || !phpJson || !outDir) {
    console.error('usage: node generate.mjs <node_modules folder> <php.json> <output folder>');
    process.exit(2);
}
const require = createRequire(path.join(path.resolve(modulesDir), 'x.js'));
const load = async (name) => import(pathToFileURL(require.resolve(name)).href);

const {htmlTagNames} = await load('html-tag-names');
const {htmlElementAttributes} = await load('html-element-attributes');
const {enumeratedAttributes} = await load('html-enumerated-attributes');
const {htmlEventAttributes} = await load('html-event-attributes');
const globals = (await load('globals')).default;
const webref = require(require.resolve('@webref/idl'));
const csstree = await load('css-tree');
const mdnCss = (file) => JSON.parse(fs.readFileSync(require.resolve(`mdn-data/css/${file}`), 'utf8'));
const php = JSON.parse(fs.readFileSync(phpJson, 'utf8'));

// Icon indexes in acimages.bmp, in the order of ICONS below.
const ICON = {tag: 0, attr: 1, value: 2, property: 3, function: 4, class: 5, keyword: 6, constant: 7,
              method: 8, event: 9, interface: 10, object: 11};

// ---------------------------------------------------------------------------------------------
// XML writing

const esc = (s) => String(s).replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;')
                            .replace(/"/g, '&quot;').replace(/\r/g, '&#13;').replace(/\n/g, '&#10;');

// One word: {name, type, description?, info?, children?, params?}.
function wordXml(w, indent) {
    let s = `${indent}<element name="${esc(w.name)}" type="${esc(w.type)}" iconIndex="${ICON[w.type]}"`;
    if (w.description) s += ` description="${esc(w.description)}"`;
    if (w.info) s += ` info="${esc(w.info)}"`;
    if (w.returns) s += ` return="${esc(w.returns)}"`;
    if (w.valueset) s += ` valueset="${esc(w.valueset)}"`;
    const inner = [];
    for (const p of w.params ?? []) inner.push(`${indent}  <param>${esc(p)}</param>`);
    for (const c of sortWords(w.children ?? [])) inner.push(wordXml(c, indent + '  '));
    return inner.length ? `${s}>\n${inner.join('\n')}\n${indent}</element>` : `${s}/>`;
}

function sortWords(words) {
    return [...words].sort((a, b) => (a.type + a.name < b.type + b.name ? -1 : a.type + a.name > b.type + b.name));
}

// A word file: the settings of the scheme, then the words.
function wordFile(comment, settings, words, valuesets = {}) {
    const lines = ['<?xml version="1.0" encoding="UTF-8"?>', `<!-- ${comment} -->`, '<root>'];
    lines.push(`  <register use="${settings.caseSensitive ? 'true' : 'false'}"/>`);
    lines.push('  <imagelist path="acimages.bmp" colormask="0xFF00FF"/>');
    for (const [type, chars] of settings.complete) lines.push(`  <Completechars type="${type}" chars="${esc(chars)}"/>`);
    for (const [type, chars] of settings.first) lines.push(`  <CompleteFirstchars type="${type}" chars="${esc(chars)}"/>`);
    lines.push(`  <TTTriggerChars chars="${esc(settings.trigger)}"/>`);
    for (const [name, values] of Object.entries(valuesets)) {
        lines.push(`  <valueset name="${esc(name)}">`);
        for (const v of [...values].sort()) lines.push(wordXml({name: v, type: 'value'}, '    '));
        lines.push('  </valueset>');
    }
    for (const w of sortWords(words)) lines.push(wordXml(w, '  '));
    lines.push('</root>', '');
    return lines.join('\n');
}

// ---------------------------------------------------------------------------------------------
// HTML: every element with its attributes, the global attributes and event handlers under the
// element "*", and the values of enumerated attributes.

const OBSOLETE = new Set(['acronym', 'applet', 'basefont', 'bgsound', 'big', 'blink', 'center', 'command',
    'content', 'dir', 'element', 'font', 'frame', 'frameset', 'image', 'isindex', 'keygen', 'listing',
    'marquee', 'menuitem', 'multicol', 'nextid', 'nobr', 'noembed', 'noframes', 'plaintext', 'rb', 'rbc',
    'rtc', 'shadow', 'spacer', 'strike', 'tt', 'xmp']);

// Values the enumerated-attribute list leaves out but a page author types every day.
const EXTRA_VALUES = {
    '*': {
        autocapitalize: ['off', 'none', 'on', 'sentences', 'words', 'characters'],
        enterkeyhint: ['enter', 'done', 'go', 'next', 'previous', 'search', 'send'],
        hidden: ['hidden', 'until-found'],
        popover: ['auto', 'manual', 'hint'],
        autocorrect: ['on', 'off'],
    },
    a: {rel: ['alternate', 'author', 'bookmark', 'external', 'help', 'license', 'next', 'nofollow',
              'noopener', 'noreferrer', 'opener', 'prev', 'privacy-policy', 'search', 'tag', 'terms-of-service']},
    link: {rel: ['alternate', 'author', 'canonical', 'dns-prefetch', 'expect', 'help', 'icon', 'license',
                 'manifest', 'modulepreload', 'next', 'pingback', 'preconnect', 'prefetch', 'preload', 'prev',
                 'privacy-policy', 'search', 'stylesheet', 'terms-of-service'],
           as: ['audio', 'document', 'embed', 'fetch', 'font', 'image', 'object', 'script', 'style', 'track',
                'video', 'worker'],
           fetchpriority: ['high', 'low', 'auto']},
    meta: {name: ['application-name', 'author', 'color-scheme', 'description', 'generator', 'keywords',
                  'referrer', 'robots', 'theme-color', 'viewport'],
           'http-equiv': ['content-language', 'content-type', 'content-security-policy', 'default-style',
                          'refresh', 'set-cookie', 'x-ua-compatible']},
    script: {type: ['importmap', 'module', 'speculationrules', 'text/javascript'],
             fetchpriority: ['high', 'low', 'auto']},
    img: {fetchpriority: ['high', 'low', 'auto']},
    style: {type: ['text/css']},
    button: {popovertargetaction: ['hide', 'show', 'toggle']},
    input: {popovertargetaction: ['hide', 'show', 'toggle']},
    iframe: {sandbox: ['allow-downloads', 'allow-forms', 'allow-modals', 'allow-orientation-lock',
                       'allow-pointer-lock', 'allow-popups', 'allow-popups-to-escape-sandbox',
                       'allow-presentation', 'allow-same-origin', 'allow-scripts',
                       'allow-top-navigation', 'allow-top-navigation-by-user-activation']},
    form: {autocomplete: ['on', 'off']},
};

// The values of attribute attr on element tag ('*' for a global attribute).
function htmlValues(tag, attr) {
    const values = new Set(EXTRA_VALUES[tag]?.[attr] ?? []);
    const defs = enumeratedAttributes[attr];
    for (const def of defs ? (Array.isArray(defs) ? defs : [defs]) : []) {
        const selectors = def.selector ? def.selector.split(',').map((s) => s.trim()) : ['*'];
        const applies = tag === '*' ? selectors.includes('*') : selectors.includes(tag);
        if (!applies) continue;
        for (const state of def.states) {
            for (const v of Array.isArray(state) ? state : [state]) if (v) values.add(v);
        }
    }
    return [...values].map((v) => ({name: v, type: 'value'}));
}

function htmlWords() {
    const attr = (tag, name) => ({name, type: 'attr', children: htmlValues(tag, name)});
    const globalsTag = {name: '*', type: 'tag', description: 'global attributes', children: []};
    for (const name of htmlElementAttributes['*']) globalsTag.children.push(attr('*', name));
    for (const name of htmlEventAttributes) globalsTag.children.push({name, type: 'event', description: 'event handler'});
    const words = [globalsTag];
    for (const tag of htmlTagNames) {
        const attrs = (htmlElementAttributes[tag] ?? []).map((name) => attr(tag, name));
        words.push({name: tag, type: 'tag', description: OBSOLETE.has(tag) ? 'obsolete element' : 'element',
                    children: attrs});
    }
    return words;
}

// ---------------------------------------------------------------------------------------------
// CSS: properties with the keywords of their syntax, at-rules, pseudo-classes and elements.

const CSS_WIDE = ['inherit', 'initial', 'revert', 'revert-layer', 'unset'];

// Colour types: their keywords are listed once, in the value set "color".
const CSS_COLOR_TYPES = new Set(['color', 'named-color', 'system-color', 'deprecated-system-color',
                                 'color-base', 'absolute-color-base']);

// Keywords reachable from a syntax tree through named types and referenced properties, leaving
// out the arguments of functions; state.color is set when a colour can stand there.
function cssKeywords(node, state, seen = new Set()) {
    if (!node) return;
    switch (node.type) {
    case 'Group':
        node.terms.forEach((t) => cssKeywords(t, state, seen));
        break;
    case 'Multiplier':
        cssKeywords(node.term, state, seen);
        break;
    case 'Keyword':
        state.keywords.add(node.name);
        break;
    case 'Type':
    case 'Property': {
        if (node.type === 'Type' && CSS_COLOR_TYPES.has(node.name)) {
            state.color = true;
            break;
        }
        const key = node.type + ':' + node.name;
        if (seen.has(key)) break;
        seen.add(key);
        const ref = node.type === 'Type' ? csstree.lexer.types[node.name] : csstree.lexer.properties[node.name];
        cssKeywords(ref?.syntax, state, seen);
        break;
    }
    }
}

// The keywords of a colour: named and system colours, currentcolor, transparent.
function cssColorKeywords() {
    const state = {keywords: new Set()};
    for (const name of ['named-color', 'system-color']) {
        csstree.definitionSyntax.walk(csstree.lexer.types[name].syntax, (n) => {
            if (n.type === 'Keyword') state.keywords.add(n.name);
        });
    }
    state.keywords.add('currentcolor');
    state.keywords.add('transparent');
    return [...state.keywords];
}

function cssWords() {
    const words = [];
    const props = mdnCss('properties.json');
    for (const [name, p] of Object.entries(props)) {
        if (name.startsWith('-') || p.status === 'obsolete' || p.status === 'nonstandard' || name === '--*') continue;
        const state = {keywords: new Set(CSS_WIDE), color: false};
        cssKeywords(csstree.lexer.properties[name]?.syntax, state);
        words.push({name, type: 'property', description: p.syntax, valueset: state.color ? 'color' : '',
                    children: [...state.keywords].filter((k) => /^[a-z]/i.test(k)).map((k) => ({name: k, type: 'value'}))});
    }
    for (const [name, a] of Object.entries(mdnCss('at-rules.json'))) {
        if (!name.startsWith('@-') && a.status !== 'obsolete') words.push({name, type: 'keyword', description: 'at-rule'});
    }
    for (const [name, s] of Object.entries(mdnCss('selectors.json'))) {
        if (/^::?[a-z]/.test(name) && s.status !== 'obsolete' && s.status !== 'nonstandard')
            words.push({name: name.replace(/\(\)$/, ''), type: 'keyword', description: s.syntax});
    }
    return words;
}

// ---------------------------------------------------------------------------------------------
// JavaScript: the standard global objects with their members (read from the running engine),
// the standard functions, the browser's globals and the keywords.

const JS_KEYWORDS = ['async', 'await', 'break', 'case', 'catch', 'class', 'const', 'continue', 'debugger',
    'default', 'delete', 'do', 'else', 'export', 'extends', 'false', 'finally', 'for', 'function', 'if',
    'import', 'in', 'instanceof', 'let', 'new', 'null', 'of', 'return', 'static', 'super', 'switch', 'this',
    'throw', 'true', 'try', 'typeof', 'var', 'void', 'while', 'with', 'yield'];

function jsMembers(obj) {
    const out = [];
    for (const key of Object.getOwnPropertyNames(obj)) {
        if (['constructor', 'caller', 'callee', 'arguments'].includes(key) || key.startsWith('__')) continue;
        const desc = Object.getOwnPropertyDescriptor(obj, key);
        const isFn = typeof desc.value === 'function';
        const word = {name: key, type: isFn ? 'method' : 'property'};
        if (isFn) word.info = `${key}(${desc.value.length ? `${desc.value.length} argument${desc.value.length > 1 ? 's' : ''}` : ''})`;
        out.push(word);
    }
    return out;
}

// The members of the browser's interfaces, from their Web IDL: operations with their arguments
// and attributes, partial definitions and mixins merged, inherited members included.
async function idlMembers() {
    const defs = new Map(), includes = [];
    for (const ast of Object.values(await webref.parseAll())) {
        for (const d of ast) {
            if (d.type === 'includes') includes.push([d.target, d.includes]);
            else if (d.name && (d.type === 'interface' || d.type === 'interface mixin')) {
                const def = defs.get(d.name) ?? {inheritance: null, members: []};
                def.inheritance ??= d.inheritance;
                def.members.push(...d.members);
                defs.set(d.name, def);
            }
        }
    }
    for (const [target, mixin] of includes) defs.get(target)?.members.push(...(defs.get(mixin)?.members ?? []));
    const typeText = (t) => {
        if (!t) return '';
        let text = t.union ? t.idlType.map(typeText).join(' or ')
            : t.generic ? `${t.generic}<${t.idlType.map(typeText).join(', ')}>`
            : typeof t.idlType === 'string' ? t.idlType : typeText(t.idlType);
        if (t.union) text = `(${text})`;
        return text + (t.nullable ? '?' : '');
    };
    // The members of an interface and of those it inherits from, the nearest first.
    return (name) => {
        const words = new Map();
        for (let def = defs.get(name); def; def = defs.get(def.inheritance)) {
            for (const m of def.members) {
                if (!m.name || m.special === 'static' || words.has(m.name) || m.name.startsWith('on')) continue;
                if (m.type === 'operation') {
                    const params = m.arguments.map((a) => `${a.optional ? 'optional ' : ''}${typeText(a.idlType)}${a.variadic ? '...' : ''} ${a.name}`);
                    words.set(m.name, {name: m.name, type: 'method', description: `${m.name}(${params.join(', ')})`,
                                       params, returns: typeText(m.idlType)});
                } else if (m.type === 'attribute') {
                    words.set(m.name, {name: m.name, type: 'property', description: typeText(m.idlType)});
                }
            }
            if (words.size > 2000) break;
        }
        return [...words.values()];
    };
}

// Browser globals that are objects of an interface, with that interface.
const BROWSER_OBJECTS = {document: 'Document', window: 'Window', navigator: 'Navigator', location: 'Location',
    history: 'History', localStorage: 'Storage', sessionStorage: 'Storage', screen: 'Screen',
    performance: 'Performance', crypto: 'Crypto', customElements: 'CustomElementRegistry'};
const interfaceMembers = await idlMembers();

function jsWords() {
    const words = JS_KEYWORDS.map((name) => ({name, type: 'keyword'}));
    const names = new Set();
    for (const name of Object.keys(globals.builtin)) {
        const value = globalThis[name];
        names.add(name);
        if (typeof value === 'function' && /^[A-Z]/.test(name)) {
            const children = jsMembers(value).filter((m) => !['length', 'name', 'prototype'].includes(m.name));
            if (value.prototype) children.push({name: 'prototype', type: 'property', children: jsMembers(value.prototype)});
            words.push({name, type: 'class', description: 'standard built-in object', children});
        } else if (typeof value === 'function') {
            words.push({name, type: 'function', description: 'standard function', info: `${name}(${value.length ? 'argument' : ''})`});
        } else if (value !== null && typeof value === 'object') {
            words.push({name, type: 'object', description: 'standard built-in object', children: jsMembers(value)});
        } else {
            words.push({name, type: 'constant', description: 'standard value'});
        }
    }
    const consoleWord = {name: 'console', type: 'object', description: 'browser',
                         children: jsMembers(console).filter((m) => m.type === 'method' &&
                             !['Console', 'context', 'createTask', 'profile', 'profileEnd', 'timeStamp'].includes(m.name))};
    words.push(consoleWord);
    names.add('console');
    for (const name of Object.keys(globals.browser)) {
        if (names.has(name) || name.startsWith('on') || /^(webkit|moz|ms)/i.test(name)) continue;
        names.add(name);
        if (BROWSER_OBJECTS[name]) {
            words.push({name, type: 'object', description: BROWSER_OBJECTS[name],
                        children: interfaceMembers(BROWSER_OBJECTS[name])});
        } else {
            words.push({name, type: /^[A-Z]/.test(name) ? 'class' : 'object', description: 'browser'});
        }
    }
    return words;
}

// ---------------------------------------------------------------------------------------------
// PHP: the built-in functions with their signatures, the built-in classes and the keywords.

function phpWords() {
    const words = php.keywords.map((name) => ({name, type: 'keyword'}));
    for (const f of php.functions) {
        const signature = `${f.name}(${f.params.join(', ')})${f.return ? ': ' + f.return : ''}`;
        words.push({name: f.name, type: 'function', description: signature, info: f.extension,
                    returns: f.return, params: f.params});
    }
    for (const c of php.classes) {
        words.push({name: c.name, type: 'class', description: `${c.interface ? 'interface' : 'class'} (${c.extension})`});
    }
    return words;
}

// ---------------------------------------------------------------------------------------------
// The icon strip: 16 by 16 cells side by side, magenta (the mask colour) where nothing is drawn.

const GLYPHS = {
    T: ['11111', '00100', '00100', '00100', '00100', '00100', '00100'],
    A: ['01110', '10001', '10001', '11111', '10001', '10001', '10001'],
    V: ['10001', '10001', '10001', '10001', '01010', '01010', '00100'],
    P: ['11110', '10001', '10001', '11110', '10000', '10000', '10000'],
    F: ['11111', '10000', '10000', '11110', '10000', '10000', '10000'],
    C: ['01110', '10001', '10000', '10000', '10000', '10001', '01110'],
    K: ['10001', '10010', '10100', '11000', '10100', '10010', '10001'],
    N: ['10001', '11001', '10101', '10011', '10001', '10001', '10001'],
    M: ['10001', '11011', '10101', '10101', '10001', '10001', '10001'],
    E: ['11111', '10000', '10000', '11110', '10000', '10000', '11111'],
    I: ['01110', '00100', '00100', '00100', '00100', '00100', '01110'],
    O: ['01110', '10001', '10001', '10001', '10001', '10001', '01110'],
};
// Letter and colour (0xRRGGBB) of each icon, in ICON order.
const ICONS = [['T', 0x1F5FBF], ['A', 0xBF5F1F], ['V', 0x2F8F2F], ['P', 0x7F3FBF], ['F', 0x8F1F8F],
               ['C', 0xBF8F00], ['K', 0x3F3F3F], ['N', 0x1F8F8F], ['M', 0xAF2F2F], ['E', 0xCF6F00],
               ['I', 0x4F6F8F], ['O', 0x5F7F1F]];

function iconStrip() {
    const size = 16, width = size * ICONS.length;
    const pixels = new Uint32Array(width * size).fill(0xFF00FF);
    ICONS.forEach(([letter, colour], i) => {
        for (let y = 1; y < 15; ++y)
            for (let x = 1; x < 15; ++x) {
                const corner = (x === 1 || x === 14) && (y === 1 || y === 14);
                if (!corner) pixels[y * width + i * size + x] = colour;
            }
        GLYPHS[letter].forEach((row, gy) => [...row].forEach((bit, gx) => {
            if (bit === '1') pixels[(4 + gy) * width + i * size + 5 + gx] = 0xFFFFFF;
        }));
    });
    // A 24-bit BMP, rows from the bottom, each padded to four bytes.
    const rowBytes = Math.ceil(width * 3 / 4) * 4, dataSize = rowBytes * size;
    const bmp = Buffer.alloc(54 + dataSize);
    bmp.write('BM', 0, 'ascii');
    bmp.writeUInt32LE(54 + dataSize, 2);
    bmp.writeUInt32LE(54, 10);
    bmp.writeUInt32LE(40, 14);
    bmp.writeInt32LE(width, 18);
    bmp.writeInt32LE(size, 22);
    bmp.writeUInt16LE(1, 26);
    bmp.writeUInt16LE(24, 28);
    bmp.writeUInt32LE(dataSize, 34);
    bmp.writeInt32LE(2835, 38);
    bmp.writeInt32LE(2835, 42);
    for (let y = 0; y < size; ++y)
        for (let x = 0; x < width; ++x) {
            const p = pixels[(size - 1 - y) * width + x], o = 54 + y * rowBytes + x * 3;
            bmp[o] = p & 0xFF;
            bmp[o + 1] = (p >> 8) & 0xFF;
            bmp[o + 2] = (p >> 16) & 0xFF;
        }
    return bmp;
}

// ---------------------------------------------------------------------------------------------

fs.mkdirSync(outDir, {recursive: true});
const write = (name, text) => fs.writeFileSync(path.join(outDir, name), text);
const generated = 'Generated by AutoComplete/generator/generate.sh; do not edit.';

write('html.xml', wordFile(`HTML elements, attributes and values. ${generated}`, {
    caseSensitive: false,
    complete: [['tag', '[\\s>/]'], ['attr', '[\\s=>/]'], ['value', '[\\s"\'>]']],
    first: [['tag', '<'], ['attr', '\\s'], ['value', '["\']']],
    trigger: '',
}, htmlWords()));
write('css.xml', wordFile(`CSS properties and their keywords. ${generated}`, {
    caseSensitive: false,
    complete: [['property', '[\\s:;]'], ['value', '[\\s;!}]'], ['keyword', '[\\s{(]']],
    first: [['property', '[{;\\s]'], ['value', '[:\\s]'], ['keyword', '[@:]']],
    trigger: '',
}, cssWords(), {color: cssColorKeywords()}));
write('javascript.xml', wordFile(`JavaScript standard objects, browser globals and keywords. ${generated}`, {
    caseSensitive: true,
    complete: ['keyword', 'class', 'object', 'function', 'constant', 'method', 'property'].map((t) => [t, '[\\s.(;,)]']),
    first: [['method', '\\.'], ['property', '\\.']],
    trigger: '(',
}, jsWords()));
write('php.xml', wordFile(`PHP ${php.version} built-in functions, classes and keywords. ${generated}`, {
    caseSensitive: false,
    complete: ['function', 'class', 'keyword'].map((t) => [t, '[\\s(;,)]']),
    first: [['class', '[\\\\:]']],
    trigger: '(,',
}, phpWords()));
write('acimages.bmp', iconStrip());
console.log(`written to ${outDir}`);
