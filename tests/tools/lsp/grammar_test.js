// The VS Code grammar, tokenized with VS Code's own engine (vscode-textmate on Oniguruma):
// the story's words get the scopes that colour them. Usage: node grammar_test.js REPOSITORY
const fs = require('fs');
const path = require('path');

const root = path.resolve(process.argv[2]);
const modules = path.join(root, 'editors/vscode/node_modules');
const textmate = require(path.join(modules, 'vscode-textmate'));
const oniguruma = require(path.join(modules, 'vscode-oniguruma'));

const failures = [];
function check(condition, what) {
  if (!condition) {
    failures.push(what);
    console.log('FAILED: ' + what);
  }
}

async function loadGrammar() {
  const wasm = fs.readFileSync(path.join(modules, 'vscode-oniguruma/release/onig.wasm')).buffer;
  await oniguruma.loadWASM(wasm);
  const registry = new textmate.Registry({
    onigLib: Promise.resolve({
      createOnigScanner: (sources) => new oniguruma.OnigScanner(sources),
      createOnigString: (text) => new oniguruma.OnigString(text),
    }),
    loadGrammar: async () => textmate.parseRawGrammar(
      fs.readFileSync(path.join(root, 'editors/vscode/syntaxes/orane.tmLanguage.json'), 'utf8'), 'orane.tmLanguage.json'),
  });
  return registry.loadGrammar('source.orane');
}

/// The text of each token of `line` with its innermost scope.
function tokens(grammar, line) {
  const result = grammar.tokenizeLine(line, textmate.INITIAL);
  return result.tokens.map((token) => [line.substring(token.startIndex, token.endIndex), token.scopes[token.scopes.length - 1]]);
}

function scopeOf(grammar, line, text) {
  const found = tokens(grammar, line).find(([word]) => word === text);
  return found ? found[1] : undefined;
}

loadGrammar().then((grammar) => {
  const cases = [
    ['SCENE quai_gare', 'quai_gare', 'entity.name.section.scene.orane'],
    ['SCENE quai_gare', 'SCENE', 'keyword.control.scene.orane'],
    ['FORWARD rue_gare', 'rue_gare', 'entity.name.section.link.orane'],
    ['-> sortie_gare  ', 'sortie_gare', 'entity.name.section.link.orane'],
    ['* Le suivre', ' Le suivre', 'string.unquoted.choice-label.orane'],
    ['ORANE', 'ORANE', 'storage.type.writer.orane'],
    ['# needs: lucie, salaire', 'salaire', 'variable.other.fact.orane'],
    ['# sets: carnet', 'sets', 'keyword.other.annotation.orane'],
    ['# Lyon, novembre 1894.', '# Lyon, novembre 1894.', 'comment.line.number-sign.orane'],
    // Plain text stays plain: a writer's name in lower case, an annotation misspelt.
    ['Nathan a dit non.', 'Nathan a dit non.', 'source.orane'],
    ['# need: lucie', '# need: lucie', 'comment.line.number-sign.orane'],
  ];
  for (const [line, text, scope] of cases) {
    check(scopeOf(grammar, line, text) === scope, `"${text}" in "${line}" is ${scope} (got ${scopeOf(grammar, line, text)})`);
  }

  // Over our whole story: every scene and every link gets its colour, accents and all.
  let names = 0;
  for (const file of fs.readdirSync(path.join(root, 'resources/stories')).filter((name) => name.endsWith('.txt'))) {
    for (const line of fs.readFileSync(path.join(root, 'resources/stories', file), 'utf8').split('\n')) {
      const match = /^(SCENE|FORWARD|->) *(\S+)\s*$/.exec(line);
      if (!match) continue;
      const expected = match[1] === 'SCENE' ? 'entity.name.section.scene.orane' : 'entity.name.section.link.orane';
      check(scopeOf(grammar, line, match[2]) === expected, `${file}: "${line}"`);
      names += 1;
    }
  }
  check(names > 300, `our story has its scenes and links (${names} found)`);
  if (failures.length > 0) process.exit(1);
  console.log(`grammar: ${cases.length} cases and ${names} names of our story coloured as expected`);
}).catch((error) => {
  console.log('FAILED: ' + error);
  process.exit(1);
});
