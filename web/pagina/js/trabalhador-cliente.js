// The page's side of the worker: one request at a time, answered by the worker's first message
// that is not a progress report. Cancelling ends the worker (a run cannot be stopped from inside)
// and starts another.
export class Trabalhador {
  constructor(url) {
    this.url = url;
    this.fila = Promise.resolve();
    this.inicia();
  }

  inicia() {
    this.atual = null;
    this.worker = new Worker(this.url, {type: 'module'});
    this.pronto = new Promise((resolve, reject) => {
      this.aoPronto = {resolve, reject};
    });
    this.worker.onmessage = ({data}) => {
      if (data.tipo === 'pronto') {
        this.aoPronto.resolve(data.versao);
        return;
      }
      const pedido = this.atual;
      if (data.tipo === 'falha' && !pedido) {
        this.aoPronto.reject(new Error(data.mensagem));
        return;
      }
      if (!pedido) return;
      if (data.tipo === 'progresso') {
        pedido.aoProgresso?.(data);
        return;
      }
      this.atual = null;
      if (data.tipo === 'falha')
        pedido.reject(new Error(data.mensagem));
      else
        pedido.resolve(data);
    };
    this.worker.onerror = (evento) => {
      evento.preventDefault();
      const erro = new Error(evento.message || 'o módulo de validação não pôde ser carregado');
      this.aoPronto.reject(erro);
      if (this.atual) {
        this.atual.reject(erro);
        this.atual = null;
      }
    };
  }

  pede(mensagem, aoProgresso) {
    const vez = this.fila.then(
        () => new Promise((resolve, reject) => {
          this.atual = {resolve, reject, aoProgresso};
          this.worker.postMessage(mensagem);
        }),
    );
    this.fila = vez.catch(() => {});
    return vez;
  }

  cancela() {
    const pedido = this.atual;
    this.worker.terminate();
    this.inicia();
    if (pedido) {
      const erro = new Error('cancelado');
      erro.cancelado = true;
      pedido.reject(erro);
    }
  }
}
