// QuorvValida as a WebAssembly module: the library's public classes with the names and the
// arguments of C++ (include/quorvvalida/), over files of the module's file system. Objects made
// with `new` hold C++ memory: call `delete()` when done with them.

/** An argument that C++ takes by reference: the call reads `valor` and writes it back. */
export interface Referencia<T> {
  valor: T;
}

/** Releases the C++ object behind a JavaScript one. */
interface ObjetoCpp {
  delete(): void;
}

/** The share of the file read so far; answer a number to change it, as a by-reference argument. */
export type Evento = (dPorcentagem: number) => number | void;

/** Today's date as a day serial (1899-12-30 is day 0); see SerialDaData. */
export type Relogio = () => number;

/** Checks a state registration for a UF: 0 accepts it, anything else (or a throw) refuses it. */
export type VerificadorInscricao = (inscricao: string, uf: string) => number;

/**
 * Why a call could not validate or could not write its output whole (UltimaFalha), by the
 * library's fixed numbers: 0 Nenhuma (it could), 1 EntradaInacessivel (the file to validate is
 * missing, a directory or unreadable), 2 DiretorioInexistente, 3 EntradaEhAdvertencias (the file
 * to validate is the working directory's ADVERTENCIAS.TXT), 4 AdvertenciasNaoCriadas,
 * 5 EscritaAdvertencias (a write to ADVERTENCIAS.TXT failed), 6 RetornoNaoCriado, 7 EscritaRetorno,
 * 8 RetornoEhEntrada (the return file would be the input or its warnings file), 9 ErroGrave (forms:
 * a record type that is not a number), 10 FalhaInterna. DescricaoDaFalha tells each to people.
 */
export type Falha = 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 | 9 | 10;

/**
 * Valida_Dados and Valida_Fichas: the run status (0 clean, 1 warnings, 8 structural error, 9 file
 * or directory unusable); the remessa number comes back in nNumeroRemessa.valor.
 */
export type ValidaArquivo = (
  sArquivoRemessa: string,
  nNumeroRemessa: Referencia<string>,
  sDiretorioTrabalho: string,
  nChaveRemessa?: number,
  nChaveProcessamento?: number,
  sOrigemChamada?: string,
  sNomeServidor?: string,
  sCaracterSeparador?: string,
) => number;

/** The producer-invoice validator (lines of 160 characters). */
export interface Validacao extends ObjetoCpp {
  Valida_Dados: ValidaArquivo;
  Gravar_Erro(lCodErro: number, dLINHA?: number): boolean;
  /** Why the last Valida_Dados could not validate the file or write every warning (0: none). */
  UltimaFalha(): Falha;
  /** Raised while the file is read; a function that throws ends the run with status 9. */
  Progress: Evento | null;
  /** Today for the date checks; the machine's local date when null. */
  Hoje: Relogio | null;
}

/** The registration-form validator (lines of 260 characters). */
export interface ValidacaoFichaCadastral extends ObjetoCpp {
  sNumeroRemessaRef: string;
  sTipo_Solicitacao: string;
  sNro_Solicitacao: string;
  iOrdem_Faturamento: number;
  iOrdem_Talao: number;
  Dt_Inicio_Atividade: string;
  Dt_Fim_Atividade: string;
  contSolicitacao: number;
  contInscricao: number;
  bTem_Erro_Grave: boolean;
  /** A form run that reaches its trailer answers 8: judge it by ADVERTENCIAS.TXT. */
  Valida_Fichas: ValidaArquivo;
  Procedimentos_Finais_Fichas(sDIRETORIOORDADV: string): boolean;
  Gravar_Erro_Ficha(lCodErro: number, dLINHA?: number): boolean;
  Gravar_Erro_FichaTR110(lCodErro: number, dLINHA?: number): boolean;
  /** Why the last Valida_Fichas could not validate the file or write every warning (0: none). */
  UltimaFalha(): Falha;
  FichaProgress: Evento | null;
  Hoje: Relogio | null;
}

/** The web system's entry points; the return file is sDirTrabalho + sFileRetorno. */
export interface ValidacaoTarnWEB extends ObjetoCpp {
  Valida_Dados_Tarnweb(
    sFilePath: string,
    sFileRetorno: string,
    sDirTrabalho: string,
    nNumeroRemessa: Referencia<string>,
  ): boolean;
  BreakString(psTexto: string, piSub: number, piMaxLen: number): string;
  Valida_TIPO(
    sFilePath: string,
    sFileRetorno: string,
    sDirTrabalho: string,
    nNumeroRemessa: Referencia<string>,
    sTipoDoc: string,
  ): boolean;
  Valida_Dados_Ficha_Cadastral(
    sFilePath: string,
    sFileRetorno: string,
    sDirTrabalho: string,
    nNumeroRemessa: Referencia<string>,
  ): boolean;
  TipoArquivo(valor: string): void;
  ProgramaChamador(valor: string): void;
  /**
   * Why the last call failed, whatever it answered: a form run stopped by a record type that is
   * not a number may leave no return file and answer true.
   */
  UltimaFalha(): Falha;
  Hoje: Relogio | null;
}

export interface clsQuorvMsg extends ObjetoCpp {
  MensagemAdvertencia(nCodigoAdvertencia: number): string;
}

export interface clsQuorvMsgFichas extends ObjetoCpp {
  MensagemAdvertenciaFichas(nCodigoAdvertencia: number): string;
}

/** Walks a form warnings file: use the record, test EndOfStream, then MoveNext. */
export interface clsQuorvAdvBDFichas extends ObjetoCpp {
  OpenStream(psFilePath: string): void;
  CloseStream(): void;
  MoveNext(): void;
  EndOfStream(): boolean;
  TR(): string;
  Nota(): string;
  LINHA(): number;
  Descricao(): string;
  TotalRecords(): number;
  /** Throws an Error when no stream is open. */
  RecordCount(): number;
}

export interface FileUtility extends ObjetoCpp {
  GetDrive(sArquivoRemessa: string): string;
  GetFileName(sArquivoRemessa: string, bWithExtension?: boolean): string;
  GetFileExtension(sArquivoRemessa: string): string;
  GetPath(sArquivoRemessa: string, bWithDevice?: boolean): string;
  FileExists(sArquivoRemessa: string): boolean;
}

/** The module's file system (emscripten's FS), with its NODEFS and WORKERFS kinds. */
export interface SistemaDeArquivos {
  mkdir(caminho: string): void;
  writeFile(caminho: string, dados: string | ArrayBufferView): void;
  readFile(caminho: string): Uint8Array;
  readFile(caminho: string, opcoes: { encoding: 'utf8' }): string;
  unlink(caminho: string): void;
  rmdir(caminho: string): void;
  readdir(caminho: string): string[];
  analyzePath(caminho: string): { exists: boolean };
  mount(tipo: unknown, opcoes: object, ponto: string): void;
  unmount(ponto: string): void;
  filesystems: { MEMFS: unknown; NODEFS: unknown; WORKERFS: unknown };
  [outro: string]: unknown;
}

export interface QuorvValida {
  Validacao: { new (): Validacao };
  ValidacaoFichaCadastral: { new (): ValidacaoFichaCadastral };
  ValidacaoTarnWEB: { new (): ValidacaoTarnWEB };
  clsQuorvMsg: { new (): clsQuorvMsg };
  clsQuorvMsgFichas: { new (): clsQuorvMsgFichas };
  clsQuorvAdvBDFichas: { new (): clsQuorvAdvBDFichas };
  FileUtility: { new (): FileUtility };
  ConverteLong(texto: string): number;
  ConverteDouble(texto: string): number;
  ConverteData(texto: string): number;
  ValidaCNPJ(texto: string): boolean;
  ValidaCPF(texto: string): boolean;
  ConfereDigitosCNPJ(texto: string): boolean;
  ConfereDigitosCPF(texto: string): boolean;
  ValidaInscricaoEstadual(inscricao: string, uf: string): boolean;
  /**
   * The state-registration checker of every validator of this module; null removes it, and then
   * every registration of the home state is refused (a module cannot load the state's library).
   */
  DefinirVerificadorInscricao(verificador: VerificadorInscricao | null): void;
  /** Accepts every registration without asking anyone, as the tool's --sem-verificar-inscricao;
   * DefinirVerificadorInscricao (a function, or null for none) replaces it. */
  AceitarTodasInscricoes(): void;
  VerificadorInscricaoDisponivel(): boolean;
  /** The day serial of a date; -1 when it is no date. */
  SerialDaData(ano: number, mes: number, dia: number): number;
  DataLocalDeHoje(): number;
  /** One Portuguese sentence that tells a failure; a number outside Falha gets one that says so. */
  DescricaoDaFalha(falha: number): string;
  /** The library's version, 1.1.0.1. */
  Versao(): string;
  FS: SistemaDeArquivos;
}

/** Loads the module; the options are emscripten's (wasmBinary, locateFile, print...). */
export default function carregarQuorvValida(opcoes?: Record<string, unknown>): Promise<QuorvValida>;
