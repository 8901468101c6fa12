-- The product of two numbers in two's complement, exact. One of them is recoded into digits of two bits from -1 to 2
-- (the highest one from -2 to 2): a digit of b + 0101...01 is the digit of b plus the carry that it takes, plus 1. Rows
-- are added in blocks of four digits, blocks in pairs, pairs in quads, and quads at last. With synthesize 1 it is one
-- product that tools put into multiplier blocks, with the same borders.
--   step recode:  digits of b; the lowest row, whose digit takes no carry
--   step choose:  the rows
--   step twos:    the sums of two rows
--   step rows:    the sum of four rows for each block
--   step pairs:   the sum of two blocks
--   step quads:   the sum of two pairs
--   step all:     the sum of both quads
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_product is
  generic (width         : positive;   -- bits of both, even, 4 to 64
           synthesize    : natural;
           recode_border : natural;    -- 1: a register behind the step
           rows_border   : natural;
           pairs_border  : natural;
           quads_border  : natural := 0;
           twos_border   : natural := 0;
           choose_border : natural := 0);
  port (sysclk, enable : in std_logic;
        a, b    : in std_logic_vector(width - 1 downto 0);
        product : out std_logic_vector(2 * width - 1 downto 0));
end xfc_product;

architecture rtl of xfc_product is
  constant digits     : positive := width / 2;
  constant blocks     : positive := (digits + 3) / 4;
  constant block_bits : positive := width + 8;
  constant pair_bits  : positive := width + 16;
  constant quad_bits  : positive := width + 32;

  function digits_of(block_index : natural) return positive is
  begin
    if block_index = blocks - 1 then return digits - 4 * block_index; else return 4; end if;
  end digits_of;
  function is_one(condition : boolean) return std_logic is
  begin
    if condition then return '1'; else return '0'; end if;
  end is_one;

  signal recode_a : std_logic_vector(width - 1 downto 0);
begin
  assert width mod 2 = 0 and width >= 4 and width <= 64 report "xfc_product: width is even, 4 to 64" severity failure;

  recode_1 : entity work.xfc_register generic map (width, recode_border) port map (sysclk, enable, a, recode_a);

  multiplier_blocks : if synthesize = 1 generate
    signal recode_b, choose_a, choose_b : std_logic_vector(width - 1 downto 0);
    signal product_d, twos_product, rows_product, pairs_product : std_logic_vector(2 * width - 1 downto 0);
  begin
    recode_0 : entity work.xfc_register generic map (width, recode_border) port map (sysclk, enable, b, recode_b);
    choose_0 : entity work.xfc_register generic map (width, choose_border)
      port map (sysclk, enable, recode_a, choose_a);
    choose_1 : entity work.xfc_register generic map (width, choose_border)
      port map (sysclk, enable, recode_b, choose_b);
    product_d <= std_logic_vector(signed(choose_a) * signed(choose_b));
    twos_0 : entity work.xfc_register generic map (2 * width, twos_border)
      port map (sysclk, enable, product_d, twos_product);
    rows_0 : entity work.xfc_register generic map (2 * width, rows_border)
      port map (sysclk, enable, twos_product, rows_product);
    pairs_0 : entity work.xfc_register generic map (2 * width, pairs_border)
      port map (sysclk, enable, rows_product, pairs_product);
    quads_0 : entity work.xfc_register generic map (2 * width, quads_border)
      port map (sysclk, enable, pairs_product, product);
  end generate;

  written_out : if synthesize = 0 generate
    -- recode
    signal codes_d, codes : std_logic_vector(width - 1 downto 0);
    signal offset : std_logic_vector(width - 1 downto 0);
    signal minus_two_d, minus_two : std_logic_vector(0 downto 0);
    signal first_inverts : std_logic_vector(0 downto 0);
    signal first_row, first_d, first : std_logic_vector(width downto 0);
    -- rows: eight blocks, of which the higher ones may be empty
    signal blocks_d, block_sums : std_logic_vector(8 * block_bits - 1 downto 0);
    signal short_d, short : std_logic_vector(7 downto 0);
    signal minus_twos : std_logic_vector(7 downto 0);
    signal has_first : std_logic_vector(7 downto 0);
    -- pairs
    signal pairs_d, pair_sums : std_logic_vector(4 * pair_bits - 1 downto 0);
    signal pair_short_d, pair_short : std_logic_vector(3 downto 0);
    -- quads
    signal lower_d, upper_d, lower, upper : std_logic_vector(quad_bits - 1 downto 0);
    signal upper_short : std_logic_vector(0 downto 0);
    -- all
    signal all_bits : std_logic_vector(width + 63 downto 0);
  begin
    -- recode
    fill : for i in 0 to digits - 1 generate
      offset(2 * i + 1 downto 2 * i) <= "01";
    end generate;
    codes_d <= std_logic_vector(unsigned(b) + unsigned(offset));
    minus_two_d(0) <= b(width - 1) and codes_d(width - 1) and codes_d(width - 2);
    first_inverts(0) <= b(1) and b(0);
    first_row <= not (a(width - 1) & a) when first_inverts = "1" else
                 a & '0' when b(1) = '1' else
                 a(width - 1) & a when b(0) = '1' else (others => '0');
    first_d <= std_logic_vector(unsigned(first_row) + unsigned(first_inverts));

    recode_0 : entity work.xfc_register generic map (width, recode_border) port map (sysclk, enable, codes_d, codes);
    recode_2 : entity work.xfc_register generic map (1, recode_border)
      port map (sysclk, enable, minus_two_d, minus_two);
    recode_3 : entity work.xfc_register generic map (width + 1, recode_border)
      port map (sysclk, enable, first_d, first);

    -- rows
    rows : for i in 0 to 7 generate
      has_first(i) <= is_one(i = 0);
      minus_twos(i) <= minus_two(0) and is_one(i = blocks - 1);
      used : if i < blocks generate
        add_rows : entity work.xfc_product_rows generic map (width, digits_of(i), twos_border, choose_border)
          port map (sysclk, enable, recode_a, first, has_first(i),
                    codes(8 * i + 2 * digits_of(i) - 1 downto 8 * i), minus_twos(i),
                    blocks_d(block_bits * (i + 1) - 1 downto block_bits * i), short_d(i));
      end generate;
      absent : if i >= blocks generate
        blocks_d(block_bits * (i + 1) - 1 downto block_bits * i) <= (others => '0');
        short_d(i) <= '0';
      end generate;
    end generate;

    rows_0 : entity work.xfc_register generic map (8 * block_bits, rows_border)
      port map (sysclk, enable, blocks_d, block_sums);
    rows_1 : entity work.xfc_register generic map (8, rows_border) port map (sysclk, enable, short_d, short);

    -- pairs
    pairs : for i in 0 to 3 generate
      add_blocks : entity work.xfc_add_shifted generic map (block_bits, 8, pair_bits)
        port map (block_sums(block_bits * (2 * i + 1) - 1 downto block_bits * 2 * i),
                  block_sums(block_bits * (2 * i + 2) - 1 downto block_bits * (2 * i + 1)), short(2 * i + 1),
                  pairs_d(pair_bits * (i + 1) - 1 downto pair_bits * i));
      pair_short_d(i) <= short(2 * i);
    end generate;

    pairs_0 : entity work.xfc_register generic map (4 * pair_bits, pairs_border)
      port map (sysclk, enable, pairs_d, pair_sums);
    pairs_1 : entity work.xfc_register generic map (4, pairs_border)
      port map (sysclk, enable, pair_short_d, pair_short);

    -- quads
    add_lower : entity work.xfc_add_shifted generic map (pair_bits, 16, quad_bits)
      port map (pair_sums(pair_bits - 1 downto 0), pair_sums(2 * pair_bits - 1 downto pair_bits), pair_short(1),
                lower_d);
    add_upper : entity work.xfc_add_shifted generic map (pair_bits, 16, quad_bits)
      port map (pair_sums(3 * pair_bits - 1 downto 2 * pair_bits), pair_sums(4 * pair_bits - 1 downto 3 * pair_bits),
                pair_short(3), upper_d);

    quads_0 : entity work.xfc_register generic map (quad_bits, quads_border) port map (sysclk, enable, lower_d, lower);
    quads_1 : entity work.xfc_register generic map (quad_bits, quads_border) port map (sysclk, enable, upper_d, upper);
    quads_2 : entity work.xfc_register generic map (1, quads_border)
      port map (sysclk, enable, pair_short(2 downto 2), upper_short);

    -- all
    add_all : entity work.xfc_add_shifted generic map (quad_bits, 32, width + 64)
      port map (lower, upper, upper_short(0), all_bits);
    product <= all_bits(2 * width - 1 downto 0);
  end generate;
end rtl;
