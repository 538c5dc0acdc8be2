// Story files are .txt files beside a suspects.ini: such a file is given the story language
// when it opens, and orane-story's language server serves every file of that language.
const fs = require('fs');
const path = require('path');
const vscode = require('vscode');
const { LanguageClient } = require('vscode-languageclient/node');

let client;

function isStoryFile(document) {
  return document.uri.scheme === 'file' && document.fileName.endsWith('.txt')
    && fs.existsSync(path.join(path.dirname(document.fileName), 'suspects.ini'));
}

function adopt(document) {
  if (document.languageId !== 'orane' && isStoryFile(document)) {
    vscode.languages.setTextDocumentLanguage(document, 'orane');
  }
}

exports.activate = function activate(context) {
  vscode.workspace.textDocuments.forEach(adopt);
  context.subscriptions.push(vscode.workspace.onDidOpenTextDocument(adopt));
  const command = vscode.workspace.getConfiguration('oraneStory').get('command') || 'orane-story';
  client = new LanguageClient('oraneStory', 'Orane story', { command, args: ['lsp'] }, {
    documentSelector: [{ scheme: 'file', language: 'orane' }],
    synchronize: { fileEvents: vscode.workspace.createFileSystemWatcher('**/*.{txt,ini}') },
  });
  return client.start();
};

exports.deactivate = function deactivate() {
  return client ? client.stop() : undefined;
};
