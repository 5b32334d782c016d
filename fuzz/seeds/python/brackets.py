class A:
    x = (1,
class B:
    d = {
  'a':
  1}]
if __name__ == '__main__':
    main()
