// Compiled, not run, by the tests: a host in TypeScript uses the module through its declarations.
import carregarQuorvValida, {
  type Falha,
  type QuorvValida,
  type Referencia,
} from '../dist/modulo/index.js';

export async function validaNotas(bytes: Uint8Array): Promise<[number, string]> {
  const q: QuorvValida = await carregarQuorvValida();
  q.FS.writeFile('/remessa.txt', bytes);
  q.FS.mkdir('/trabalho');
  q.DefinirVerificadorInscricao((inscricao: string, uf: string) => (uf === 'QZ' ? 0 : 1));
  const validacao = new q.Validacao();
  validacao.Hoje = () => q.SerialDaData(2024, 6, 30);
  validacao.Progress = (porcentagem: number) => porcentagem;
  const numero: Referencia<string> = { valor: '' };
  const status: number = validacao.Valida_Dados('/remessa.txt', numero, '/trabalho', 0, 0, 'A0');
  const falha: Falha = validacao.UltimaFalha();
  const motivo: string = q.DescricaoDaFalha(falha);
  validacao.delete();
  const fichas = new q.ValidacaoFichaCadastral();
  const falhaFichas: Falha = fichas.UltimaFalha();
  fichas.delete();
  const web = new q.ValidacaoTarnWEB();
  web.TipoArquivo('RET');
  const aceito: boolean = web.Valida_TIPO('/remessa.txt', '/R.TXT', '/trabalho', numero, 'P');
  const falhaWeb: Falha = web.UltimaFalha();
  web.delete();
  const leitor = new q.clsQuorvAdvBDFichas();
  leitor.OpenStream('/trabalho/ADVERTENCIAS.TXT');
  const linha: number = leitor.LINHA();
  leitor.delete();
  const falhas = falha + falhaFichas + falhaWeb;
  return [status + linha + falhas + (aceito ? 1 : 0), numero.valor + motivo];
}
