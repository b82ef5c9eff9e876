// QuorvValida as a WebAssembly module, for node and for browsers: the library's public classes
// with the same names and arguments as in C++, over files in the module's file system (FS).
//
//   import carregarQuorvValida from './index.js';
//   const q = await carregarQuorvValida();
//   q.FS.writeFile('/remessa.txt', bytes);
//   const validacao = new q.Validacao();
//   const numero = { valor: '' };
//   const status = validacao.Valida_Dados('/remessa.txt', numero, '/');
//   validacao.delete();
import criarModulo from './quorvvalida.js';

const emNode = typeof process === 'object' && typeof process.versions?.node === 'string';

// An event or a clock as the module calls it: what it throws cannot cross the library's C++
// frames, so it answers false instead, and the library takes that as a failing event or clock
// (the run ends with status 9), as it takes a C++ one that throws. `numero` tells whether the
// answer must be a number, as the clock's must.
function protegida(funcao, nome, numero) {
  if (funcao === null || funcao === undefined) return null;
  if (typeof funcao !== 'function') throw new TypeError(`${nome} deve ser uma função ou null`);
  return (...argumentos) => {
    try {
      const resposta = funcao(...argumentos);
      if (typeof resposta === 'number') return resposta;
      return numero ? false : undefined;
    } catch {
      return false;
    }
  };
}

// A state-registration checker accepts a number when it answers 0; any other answer, or a
// failure, refuses it, as a failing call to the state's library does.
function verificador(funcao) {
  if (funcao === null || funcao === undefined) return null;
  if (typeof funcao !== 'function') {
    throw new TypeError('DefinirVerificadorInscricao espera uma função ou null');
  }
  return (inscricao, uf) => {
    try {
      return funcao(inscricao, uf) === 0 ? 0 : 1;
    } catch {
      return 1;
    }
  };
}

// Events and the clock are properties, as in C++: the function set is kept on the object so that
// reading the property gives it back.
function propriedadeDeFuncao(classe, nome, definir, numero) {
  const guardada = Symbol(nome);
  Object.defineProperty(classe.prototype, nome, {
    get() { return this[guardada] ?? null; },
    set(funcao) {
      this[definir](protegida(funcao, nome, numero));
      this[guardada] = funcao ?? null;
    },
  });
}

/**
 * Loads the module. Options are the module's own (emscripten's): in node the wasm bytes are read
 * from beside this file unless `wasmBinary` is given; in a browser they are fetched from there.
 */
export default async function carregarQuorvValida(opcoes = {}) {
  const configuracao = {...opcoes};
  if (emNode && configuracao.wasmBinary === undefined) {
    const {readFile} = await import('node:fs/promises');
    configuracao.wasmBinary = await readFile(new URL('./quorvvalida.wasm', import.meta.url));
  }
  const modulo = await criarModulo(configuracao);
  propriedadeDeFuncao(modulo.Validacao, 'Progress', '_DefinirProgress', false);
  propriedadeDeFuncao(modulo.Validacao, 'Hoje', '_DefinirHoje', true);
  propriedadeDeFuncao(
      modulo.ValidacaoFichaCadastral, 'FichaProgress', '_DefinirFichaProgress', false);
  propriedadeDeFuncao(modulo.ValidacaoFichaCadastral, 'Hoje', '_DefinirHoje', true);
  propriedadeDeFuncao(modulo.ValidacaoTarnWEB, 'Hoje', '_DefinirHoje', true);
  modulo.DefinirVerificadorInscricao = (funcao) => {
    modulo.verificadorInscricao = verificador(funcao);
    modulo._DefinirVerificadorInscricao(modulo.verificadorInscricao !== null);
  };
  modulo.AceitarTodasInscricoes = () => {
    modulo.verificadorInscricao = null;
    modulo._AceitarTodasInscricoes();
  };
  return modulo;
}
