// Fails where a stub of a platform class says what the platform's declarations do not, or where our classes call what
// Android has not had since MIN_SDK. The declarations are TypeScript's: all kinds of numbers are one there, and
// checked exceptions and access (public or protected) are left out: the stubs' word for those is unproven. It must be
// that of the table UNPROVEN.
// usage: check-platform.mjs FOLDER_OF_DECLARATIONS MIN_SDK STUBS_CLASSES OUR_CLASSES UNPROVEN
import { execFileSync } from 'node:child_process';
import { readFileSync, readdirSync } from 'node:fs';

const [declarations, minSdk, stubs, ours, unproven] = process.argv.slice(2);
// Android's compiler D8 brings these to older versions, or compiles them away.
const BACKPORTED = /^java\.lang\.(invoke\.|Float\.isFinite$)|^java\.util\.(List\.copyOf$|Objects\.)/;

// The classes: { supers, since, isInterface, members: [{ name, isStatic, parameters, type, since }] }
const classes = new Map();
const path = [];
let since = 0;
const SCOPE = /^(?:declare|export) (?:abstract )?(module|class|interface) (\w+)(.*)\{$/;
const DECLARATION = /^(?:public|protected)? ?(static )?(?:abstract )?(\w+)(?:<[^(]*>)?(\((.*)\))?(?:: (.*))?;$/;
const text = ['android-platform-21-37-merged', 'androidx-32']
  .map(file => readFileSync(`${declarations}/${file}.d.ts`, 'utf8'));
for (const line of text.join('\n').replaceAll('globalAndroid.', 'android.').split('\n')) {
  const text = line.trim();
  const known = classes.get(path.join('.'));
  if (text.endsWith('{')) {
    const [, kind = 'module', name = '', rest] = text.match(SCOPE) ?? [];
    path.push(name);
    if (kind !== 'module') {
      const bases = rest.replace(/<.*?>(?= |$)/g, '').replace(/^<.*>/, '').split(/extends|implements|,/);
      const supers = bases.map(base => base.trim()).filter(Boolean);
      classes.set(path.join('.'), { supers, since, isInterface: kind === 'interface', members: [] });
    } else if (text.startsWith('public constructor(implementation')) known.isInterface = true;
  } else if (/^\}/.test(text)) {
    path.pop();
  } else if (known && DECLARATION.test(text)) {
    const [, isStatic, name, isMethod, list, type = 'void'] = text.match(DECLARATION);
    const parts = list ? list.split(/, (?=\w+\??: )/) : [];
    const parameters = isMethod && parts.map(part => plain(part.replace(/^\w+\??: /, '')));
    known.members.push({ name, isStatic: Boolean(isStatic), parameters, type: plain(type), since });
  }
  const note = text.match(/@since (\d+)/);
  if (note) since = Number(note[1]);
  else if (text.endsWith(';') || text.endsWith('{')) since = 0;
}

function plain(type) {
  return type.replace(/ \| null$/, '').replace(/androidNative\.Array<(.*)>$/, '$1[]').replace(/<.*>/, '');
}

function fromJava(type) {
  return type.replace(/<.*>/, '').replace(/\$/g, '.').replace(/^(byte|short|int|long|float|double)\b/, 'number')
    .replace(/^java\.lang\.String\b/, 'string').replace(/^(java\.lang\.Object|T)\b/, 'any');
}

function* lineage(name) {
  if (!classes.has(name)) return;
  yield classes.get(name);
  for (const base of classes.get(name).supers) yield* lineage(base);
}

const failures = new Set();
const check = (isRight, message) => isRight || failures.add(message);
const isOld = entry => entry.since <= Number(minSdk);
const membersOf = (type, name) => [...lineage(type)].flatMap(known => known.members.filter(each => each.name === name));
const same = (declared, java) => declared === java || /^(any|java\.lang\.Object)$/.test(declared)
  || (java === 'any' && declared.endsWith('View'));
function javap(folder, pattern, ...options) {
  const files = readdirSync(folder, { recursive: true }).filter(file => file.endsWith('.class') && pattern.test(file));
  const paths = files.map(file => `${folder}/${file}`);
  return execFileSync('javap', [...options, ...paths], { encoding: 'utf8', maxBuffer: 1 << 28 });
}

let members = 0;
let at = '';
const table = readFileSync(unproven, 'utf8').split('\n').filter(line => line && !line.startsWith('#'));
const rows = new Set(table.map(line => line.replace(/ +/, ' ')));
const unusual = new Set();
const HEADER = /^(?:public |final |abstract |static )*(class|interface) ([\w.$]+)(?:<.*>)?(?: extends ([\w.$]+))?.*\{$/;
const MODIFIERS = '^ +(?:public |protected |abstract |final )*(static )?(?:final )?(?:<.*?> )?';
const MEMBER = new RegExp(`${MODIFIERS}(?:([\\w.$[\\]]+) )?([\\w.$]+)(\\((.*)\\))?(?: throws .*)?(?: = (.*))?;$`);
for (const line of javap(stubs, /^(android|javax)/, '-protected', '-constants').split('\n')) {
  const header = line.match(HEADER);
  if (header) {
    at = header[2].replace(/\$/g, '.');
    const known = classes.get(at);
    check(known && isOld(known), `class ${at}`);
    check(known && (header[1] === 'interface') === known.isInterface, `${at} is no ${header[1]}`);
    check(!header[3] || [...lineage(at)].includes(classes.get(header[3])), `${at} extends ${header[3]}`);
    continue;
  }
  const member = line.match(MEMBER);
  if (!member || (!member[2] && !/\(/.test(line))) continue;
  const name = member[2] ? member[3] : 'constructor';
  const parameters = member[4] && (member[5] ? member[5].split(', ').map(fromJava) : []);
  const type = name === 'constructor' ? 'void' : fromJava(member[2]);
  members++;
  for (const [word] of line.replace(/ = .*|;$/, '').matchAll(/\b(byte|short|long|float|double|protected|throws .*)\b/g)) {
    unusual.add(`${word} ${at}.${name}`);
  }
  const found = membersOf(at, name).filter(entry => isOld(entry) && entry.isStatic === Boolean(member[1]));
  check(found.some(entry => (parameters && entry.parameters?.length === parameters.length
    ? parameters.every((given, i) => same(entry.parameters[i], given)) && same(entry.type, type)
    : !parameters && !entry.parameters && [type, member[6]].includes(entry.type))), `${at}: ${line.trim()}`);
}

for (const row of new Set([...rows, ...unusual])) {
  check(rows.has(row) && unusual.has(row), `${row}, in the stubs and in ${unproven}`);
}

// What our own classes call of Java itself.
const CALL = /\/\/ (?:Interface)?Method (java\/[\w/$]+)\."?([\w<>]+)"?:\((.*?)\)/g;
for (const [, owner, name, signature] of javap(ours, /^com/, '-p', '-c').matchAll(CALL)) {
  const type = owner.replace(/[/$]/g, '.');
  const count = signature.replace(/\[/g, '').match(/L[^;]*;|[A-Z]/g)?.length ?? 0;
  const declared = name === '<init>' ? 'constructor' : name;
  const found = [...membersOf(type, declared), ...membersOf('java.lang.Object', declared)];
  check(BACKPORTED.test(`${type}.${name}`) || found.some(entry => isOld(entry) && entry.parameters?.length === count),
    `${type}.${name} with ${count} arguments, called by us`);
}

for (const failure of failures) console.error(`check-platform: missing, for Android ${minSdk}: ${failure}`);
if (failures.size > 0 || members < 50) process.exit(1);
console.log(`check-platform: ${members} members of classes are the platform's`);
